#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/foundation/text_error.h"

namespace tappora {

/// How an archive is packed.
enum class Packing { gzip, zstd };

/// By the ending of its name: ".tar.gz" and ".tgz", ".tar.zst" and ".tzst"; nothing for another.
std::optional<Packing> packingOf(const std::filesystem::path& file);

/// An ordinary file in an archive.
struct ArchivedFile {
    std::string name;  ///< with "/" between folders
    std::string text;
    std::optional<std::chrono::nanoseconds> lastWritten = {};  ///< since 1970
};

/// What of an archive is taken at most: far more than many years of counting, far less than a machine has.
struct ArchiveLimits {
    std::size_t entries = 200'000;
    std::size_t bytesOfFile = 64'000'000;
    std::size_t bytes = 512'000'000;  ///< of all files, unpacked
};

/// Why an archive cannot be read or made. `what()` says it.
class ArchiveError : public tapcore::TextError {
  public:
    using TextError::TextError;
};

/// The bytes of a tar archive of these files, readable by their owner alone. ArchiveError for more than
/// `unpacked` takes.
std::string packed(const std::vector<ArchivedFile>& files, Packing packing, const ArchiveLimits& limits = {});

/// The files of a tar archive, packed in either way; folders in it are passed over. ArchiveError for one that
/// is damaged, holds a link or a device, or exceeds the limits. Names are as they are there: they may lead
/// anywhere.
std::vector<ArchivedFile> unpacked(std::string_view bytes, const ArchiveLimits& limits = {});

}  // namespace tappora

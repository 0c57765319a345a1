#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/files/file_problem.h"

namespace tapcore {

/// A file of a data folder, as a backup keeps it.
struct KeptFile {
    std::string name;  ///< its path in that folder: "days/2026-09-20.org", "laptop/days/2026-09-20.org"
    std::string text;  ///< all of its bytes
    std::optional<std::chrono::nanoseconds> lastWritten = {};  ///< since 1970

    /// The machine's sub-folder that it is in: "laptop"; "" at the top.
    std::string_view part() const;
    /// The rest of the name: "days/2026-09-20.org".
    std::string_view nameInPart() const;

    bool operator==(const KeptFile&) const = default;
};

/// All that a data folder holds, by name: the files of its own folders and of those of each machine that
/// writes into it. Files of others are none of it, nor are hidden ones, nor copies of a day that are in
/// another one already. A file that cannot be read, is not here yet or is a link is named in `missing`.
std::vector<KeptFile> filesToKeep(const std::filesystem::path& root, FileProblems& missing);

/// Why these cannot be the files of a data folder: a name that leads out of it or is none of its own, or one
/// that is there twice; nothing when they can be. For files that come from elsewhere.
std::optional<std::string> whyNotOfAFolder(const std::vector<KeptFile>& files);

/// Whether there are machines' sub-folders among them.
bool areShared(const std::vector<KeptFile>& files);

}  // namespace tapcore

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/backup/tar_archive.h"
#include "core/files/kept_files.h"

namespace tappora {

/// What one archive keeps of a user. It holds "folder/…", the data folder's files; "settings/settings.json",
/// this machine's settings; and, last, "manifest.json" with the size and the SHA-256 digest of each.
struct Backup {
    /// More than a packed archive within `ArchiveLimits` can have.
    static constexpr std::size_t mostBytes = 512'000'000;

    std::string program;                   ///< what made it: "tappora 1.0"
    std::vector<tapcore::KeptFile> files;  ///< by name
    std::optional<std::string> settings;   ///< the text of the file; nothing when there was none

    /// The archive's bytes. ArchiveError for more than an archive may hold.
    std::string packed(Packing packing) const;

    /// The backup that an archive holds, after all of it was checked: ArchiveError for one that is damaged or
    /// cut, whose files are not those of its manifest, or are not those of a data folder.
    static Backup unpacked(std::string_view bytes);
};

}  // namespace tappora

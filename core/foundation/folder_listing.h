#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "core/foundation/descriptor.h"

namespace tapcore {

/// The outcome of listing a folder.
struct FolderListing {
    enum class Status {
        missing,     ///< nothing has that name
        unreadable,  ///< something has, and `error` says why it could not be listed whole
        listed,      ///< `names` is all of it, sorted
    };

    Status status = Status::missing;
    std::vector<std::string> names;
    std::error_code error;
};

/// The names in a folder. Never throws.
FolderListing listFolder(const std::filesystem::path& folder);

/// The names in an open folder, which is closed. A folder that could not be opened is unreadable, and `errno`
/// must still say why. Never throws.
FolderListing listFolder(Descriptor folder);

/// The names in a folder, sorted; an empty list for one that is missing. Throws filesystem_error with the
/// path when it cannot be listed.
std::vector<std::string> namesIn(const std::filesystem::path& folder);

/// The names in a folder that end in `ending` (".json"), without it, sorted. Throws as `namesIn`.
std::vector<std::string> namesWithEnding(std::string_view ending, const std::filesystem::path& folder);

/// Why a folder that is there cannot be listed; empty for one that can be, or is missing. Reads no more than
/// the first name.
std::error_code whyUnlisted(const std::filesystem::path& folder);

}  // namespace tapcore

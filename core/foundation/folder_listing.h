#pragma once

#include <filesystem>
#include <string>
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

/// The same of a folder that is open, which is closed; of one that is not, as errno says why.
FolderListing listFolder(Descriptor folder);

/// The names in a folder, none in one that is missing. Throws filesystem_error with the path when it cannot
/// be listed.
std::vector<std::string> namesIn(const std::filesystem::path& folder);

/// Why a folder that is there cannot be listed, found out at its first name alone; nothing for one that can
/// be, or is missing.
std::error_code whyUnlisted(const std::filesystem::path& folder);

}  // namespace tapcore

#include "core/foundation/folder_listing.h"

#include <dirent.h>

#include <algorithm>
#include <cerrno>

#include "core/foundation/file_io.h"
#include "core/foundation/owned.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;
using Status = FolderListing::Status;

using OpenFolder = Owned<DIR, ::closedir>;

FolderListing failed(int error, const fs::path& folder) {
    // A link that leads nowhere, or a file in the folder's place, hides what should be there.
    const bool isMissing = (error == ENOENT || error == ENOTDIR) && !isThere(folder);
    return {isMissing ? Status::missing : Status::unreadable, {}, {error, std::generic_category()}};
}

/// The next entry, or none with errno 0 at the end.
const dirent* nextEntry(const OpenFolder& folder) {
    errno = 0;
    return ::readdir(folder.get());
}

FolderListing unreadable(int error) { return {Status::unreadable, {}, {error, std::generic_category()}}; }

FolderListing listOpened(const OpenFolder& opened) {
    FolderListing listing{Status::listed, {}, {}};
    while (const dirent* entry = nextEntry(opened))
        if (const std::string_view name = entry->d_name; name != "." && name != "..")
            listing.names.emplace_back(name);
    if (errno != 0) return unreadable(errno);
    std::sort(listing.names.begin(), listing.names.end());
    return listing;
}

}  // namespace

FolderListing listFolder(const fs::path& folder) {
    const OpenFolder opened(::opendir(folder.c_str()));
    return opened ? listOpened(opened) : failed(errno, folder);
}

FolderListing listFolder(Descriptor folder) {
    if (!folder.isOpen()) return unreadable(errno);
    const OpenFolder opened(::fdopendir(folder.get()));
    if (!opened) return unreadable(errno);
    folder.release();
    return listOpened(opened);
}

std::vector<std::string> namesIn(const fs::path& folder) {
    FolderListing listing = listFolder(folder);
    if (listing.status == Status::unreadable)
        throw fs::filesystem_error("cannot be listed", folder, listing.error);
    return std::move(listing.names);
}

std::vector<std::string> namesWithEnding(std::string_view ending, const fs::path& folder) {
    std::vector<std::string> names = namesIn(folder);
    std::erase_if(names, [&](const std::string& name) { return !name.ends_with(ending); });
    for (std::string& name : names) name.resize(name.size() - ending.size());
    return names;
}

std::error_code whyUnlisted(const fs::path& folder) {
    const OpenFolder opened(::opendir(folder.c_str()));
    if (!opened) {
        const FolderListing listing = failed(errno, folder);
        return listing.status == Status::missing ? std::error_code() : listing.error;
    }
    if (nextEntry(opened) || errno == 0) return {};
    return {errno, std::generic_category()};
}

}  // namespace tapcore

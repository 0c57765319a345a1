#include "core/foundation/held_folder.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

#include "core/foundation/descriptor.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;

bool isPlain(const fs::path& name) {
    return !name.empty() && name != "." && name != ".." && !name.has_root_path();
}

Descriptor openStep(int folder, const fs::path& name, int flags) {
    return Descriptor(retrying([&] { return ::openat(folder, name.c_str(), flags | O_NOFOLLOW); }));
}

}  // namespace

HeldFolder::HeldFolder(const fs::path& folder)
    : HeldFolder(Descriptor(retrying([&] { return ::open(folder.c_str(), folderFlags); }))) {}

HeldFolder::HeldFolder(Descriptor opened)
    : opened_(std::move(opened)), error_(opened_.isOpen() ? 0 : errno) {}

HeldFolder HeldFolder::folder(const fs::path& path) const { return HeldFolder(open(path, folderFlags)); }

Descriptor HeldFolder::open(const fs::path& path, int flags) const {
    errno = opened_.isOpen() ? ENOENT : error_;
    if (!opened_.isOpen() || path.empty() || !std::all_of(path.begin(), path.end(), isPlain)) return {};
    Descriptor at;
    for (const fs::path& name : path.parent_path()) {
        at = openStep(at.isOpen() ? at.get() : opened_.get(), name, folderFlags);
        if (!at.isOpen()) return {};
    }
    return openStep(at.isOpen() ? at.get() : opened_.get(), path.filename(), flags);
}

FolderListing HeldFolder::list() const {
    if (!opened_.isOpen() && error_ == ENOENT) return {};
    errno = error_;
    if (!opened_.isOpen()) return listFolder(Descriptor());
    return listFolder(Descriptor(retrying([&] { return ::openat(opened_.get(), ".", folderFlags); })));
}

HeldFolder::Kind HeldFolder::kindOf(const std::string& name) const {
    struct stat status {};
    if (!opened_.isOpen() || ::fstatat(opened_.get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) < 0)
        return Kind::none;
    return S_ISREG(status.st_mode) ? Kind::file : S_ISLNK(status.st_mode) ? Kind::link : Kind::none;
}

FileRead HeldFolder::read(const fs::path& path) const {
    return readStoredFile(open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC));
}

}  // namespace tapcore

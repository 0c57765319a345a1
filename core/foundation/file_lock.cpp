#include "core/foundation/file_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

#include "core/foundation/descriptor.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

/// What systems answer where a file system has no locks.
constexpr std::array noLocks = {ENOLCK, ENOSYS, ENOTSUP, EOPNOTSUPP, EINVAL, EBADF};

[[noreturn]] void fail(const fs::path& path) {
    const bool isUnsupported = std::find(noLocks.begin(), noLocks.end(), errno) != noLocks.end();
    const int code = isUnsupported ? ENOTSUP : errno;
    throw fs::filesystem_error("cannot lock", path, {code, std::generic_category()});
}

Descriptor opened(const fs::path& path, int flags) {
    Descriptor file(retrying([&] { return ::open(path.c_str(), flags | O_CLOEXEC, S_IRUSR | S_IWUSR); }));
    if (!file.isOpen()) fail(path);
    return file;
}

Descriptor openedFile(const fs::path& path) { return opened(path, O_RDWR | O_CREAT | O_NOFOLLOW); }
Descriptor openedFolder(const fs::path& path) { return opened(path, O_RDONLY | O_DIRECTORY); }

/// Whether the lock was to be had.
bool lock(const Descriptor& file, int how, const fs::path& path) {
    if (retrying([&] { return ::flock(file.get(), how); }) == 0) return true;
    if (errno != EWOULDBLOCK) fail(path);
    return false;
}

}  // namespace

FileLock FileLock::acquire(const fs::path& path) {
    Descriptor file = openedFile(path);
    lock(file, LOCK_EX, path);
    return FileLock(std::move(file));
}

std::optional<FileLock> FileLock::tryAcquire(const fs::path& path) {
    Descriptor file = openedFile(path);
    if (!lock(file, LOCK_EX | LOCK_NB, path)) return std::nullopt;
    return FileLock(std::move(file));
}

FileLock FileLock::acquireFolder(const fs::path& folder) {
    while (true) {
        Descriptor file = openedFolder(folder);
        lock(file, LOCK_EX, folder);  // another folder may have taken its place while it was waited for
        if (isNamed(file, folder, LastLink::followed)) return FileLock(std::move(file));
    }
}

std::optional<FileLock> FileLock::tryAcquireFolder(const fs::path& folder) {
    Descriptor file = openedFolder(folder);
    if (!lock(file, LOCK_EX | LOCK_NB, folder)) return std::nullopt;
    return FileLock(std::move(file));
}

}  // namespace tapcore

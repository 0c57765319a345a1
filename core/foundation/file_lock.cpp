#include "core/foundation/file_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <system_error>
#include <utility>

#include "core/foundation/retrying.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const fs::path& path) {
    throw fs::filesystem_error("cannot lock", path, {errno, std::generic_category()});
}

Descriptor openLockFile(const fs::path& path) {
    Descriptor file(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR));
    if (!file.isOpen()) fail(path);
    return file;
}

/// False with errno when the lock is not to be had.
bool lock(const Descriptor& file, int how) {
    return retrying([&] { return ::flock(file.get(), how); }) == 0;
}

}  // namespace

FileLock FileLock::acquire(const fs::path& path) {
    Descriptor file = openLockFile(path);
    if (!lock(file, LOCK_EX)) fail(path);
    return FileLock(std::move(file));
}

std::optional<FileLock> FileLock::tryAcquire(const fs::path& path) {
    Descriptor file = openLockFile(path);
    if (lock(file, LOCK_EX | LOCK_NB)) return FileLock(std::move(file));
    if (errno != EWOULDBLOCK) fail(path);
    return std::nullopt;
}

}  // namespace tapcore

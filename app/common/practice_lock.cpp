#include "app/common/practice_lock.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "app/common/runtime_directory.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;

constexpr const char* fileName = "practice.lock";

/// A lock of the whole file that belongs to the opened file, not to the process (fcntl(2), "Open file
/// description locks"): unlike flock's it can be asked for without being taken.
struct flock wholeFile(short type) {
    struct flock lock {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    return lock;
}

/// Shared, it is never waited for.
void set(const tapcore::Descriptor& file, short type) {
    struct flock lock = wholeFile(type);
    (void)::fcntl(file.get(), F_OFD_SETLK, &lock);
}

}  // namespace

PracticeLock::PracticeLock(const Environment& environment) {
    const fs::path path = madeRuntimeDirectory(environment) / fileName;
    file_ = tapcore::Descriptor(
        ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR));
    if (!file_.isOpen()) throw fs::filesystem_error("cannot lock", path, {errno, std::generic_category()});
}

void PracticeLock::hold() { set(file_, F_RDLCK); }

void PracticeLock::release() { set(file_, F_UNLCK); }

bool isPractising(const Environment& environment) {
    const fs::path directory = runtimeDirectory(environment);
    if (!isOwnDirectory(directory)) return false;
    // Opened anew each time: a session that ended and began again has another directory of that name.
    const tapcore::Descriptor file(
        ::open((directory / fileName).c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    struct flock lock = wholeFile(F_WRLCK);
    return file.isOpen() && ::fcntl(file.get(), F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

}  // namespace tappora

#pragma once

#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <functional>
#include <utility>

/// Which files have no locks from now on, for a process of a test's own: as on a file system that knows none.
enum class RefusedLocks { none, ofFolders, all };
inline RefusedLocks refusedLocks = RefusedLocks::none;

/// What happens while the next lock is waited for.
inline std::function<void()> duringNextLock;

/// Stands in for the system's. Included by one file of a program of tests.
extern "C" int flock(int file, int how) noexcept {
    if (const auto happen = std::exchange(duringNextLock, nullptr)) happen();
    struct stat status {};
    const bool isFolder = ::fstat(file, &status) == 0 && S_ISDIR(status.st_mode);
    if (refusedLocks == RefusedLocks::none || (refusedLocks == RefusedLocks::ofFolders && !isFolder))
        return static_cast<int>(::syscall(SYS_flock, file, how));
    errno = ENOLCK;
    return -1;
}

// Preloaded into a program under test: counts its file system calls on what is in one folder, and fails one
// of them. Told by the environment:
//
//   FAULTS_FOLDER  the folder; calls on anything else go through untouched
//   FAULTS_LOG     a file that gets a line for each counted call: "NUMBER CALL PATH"
//   FAULTS_AT      the number of the call to disturb; 0 or missing: calls are only counted
//   FAULTS_DO      how: an error's number; "short" (half is read or written); "kill" (the program is killed
//                  just before the call); "kill-later"; "vanish" (data in the
//                  folder gets another name just before the call); "full" (from this call on, the disk is
//                  full)
//   FAULTS_LATER   for "kill-later": so many microseconds after the call; with call 0, after the program
//   began

#include <dirent.h>
#include <linux/openat2.h>
#include <sys/file.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>

#include <cstdarg>

#include "tests/faults/watch.h"

namespace {

bool isMade(int flags) { return (flags & O_CREAT) != 0; }

mode_t modeOf(int flags, std::va_list& rest) {
    return isMade(flags) ? static_cast<mode_t>(va_arg(rest, unsigned)) : 0;
}

const char* openCall(int flags) {
    return isMade(flags) ? "open-new" : (flags & O_DIRECTORY) != 0 ? "open-folder" : "open";
}

bool isOpenFailing(int folder, const char* path, int flags) {
    return fails(openCall(flags), Place(folder, path), isMade(flags) ? Room::needed : Room::none);
}

/// How many bytes a call that may be cut short is to move; nothing is moved at all when it fails (-1).
ssize_t sizeFor(const char* call, int file, std::size_t size, Room room) {
    switch (fateOf(call, Place(file), room)) {
        case Fate::fails:
            return -1;
        case Fate::isCut:
            return static_cast<ssize_t>(size > 1 ? size / 2 : size);
        case Fate::proceeds:
            break;
    }
    return static_cast<ssize_t>(size);
}

[[gnu::constructor]] void begin() {
    const Work own;
    if (plan().at == 0 && plan().action == "kill-later") killLater();
}

}  // namespace

extern "C" {

#define OPEN(name)                                                         \
    int name(const char* path, int flags, ...) {                           \
        std::va_list rest;                                                 \
        va_start(rest, flags);                                             \
        const mode_t mode = modeOf(flags, rest);                           \
        va_end(rest);                                                      \
        if (isOpenFailing(AT_FDCWD, path, flags)) return -1;               \
        return next<int(const char*, int, ...)>(#name)(path, flags, mode); \
    }
#define OPEN_AT(name)                                                                   \
    int name(int folder, const char* path, int flags, ...) {                            \
        std::va_list rest;                                                              \
        va_start(rest, flags);                                                          \
        const mode_t mode = modeOf(flags, rest);                                        \
        va_end(rest);                                                                   \
        if (isOpenFailing(folder, path, flags)) return -1;                              \
        return next<int(int, const char*, int, ...)>(#name)(folder, path, flags, mode); \
    }
OPEN(open)
OPEN(open64)
OPEN_AT(openat)
OPEN_AT(openat64)

#define FOPEN(name)                                                                   \
    FILE* name(const char* path, const char* mode) {                                  \
        if (fails(mode[0] == 'r' ? "open" : "open-new", Place(path))) return nullptr; \
        return next<FILE*(const char*, const char*)>(#name)(path, mode);              \
    }
FOPEN(fopen)
FOPEN(fopen64)

long syscall(long number, ...) noexcept {
    std::va_list rest;
    va_start(rest, number);
    long word[6];
    for (long& each : word) each = va_arg(rest, long);
    va_end(rest);
    if (number == SYS_openat2) {
        const auto* how = reinterpret_cast<const open_how*>(word[2]);
        if (isOpenFailing(static_cast<int>(word[0]), reinterpret_cast<const char*>(word[1]),
                          static_cast<int>(how->flags)))
            return -1;
    }
    return next<long(long, ...)>("syscall")(number, word[0], word[1], word[2], word[3], word[4], word[5]);
}

ssize_t write(int file, const void* data, std::size_t size) {
    const ssize_t taken = sizeFor("write", file, size, Room::needed);
    if (taken < 0) return -1;
    return next<ssize_t(int, const void*, std::size_t)>("write")(file, data, static_cast<std::size_t>(taken));
}
ssize_t writev(int file, const iovec* parts, int count) {
    if (fails("write", Place(file), Room::needed)) return -1;
    return next<ssize_t(int, const iovec*, int)>("writev")(file, parts, count);
}
ssize_t read(int file, void* data, std::size_t size) {
    const ssize_t taken = sizeFor("read", file, size, Room::none);
    if (taken < 0) return -1;
    return next<ssize_t(int, void*, std::size_t)>("read")(file, data, static_cast<std::size_t>(taken));
}
ssize_t copy_file_range(int from, off64_t* at, int to, off64_t* there, std::size_t size, unsigned flags) {
    if (fails("write", Place(to), Room::needed)) return -1;
    return next<ssize_t(int, off64_t*, int, off64_t*, std::size_t, unsigned)>("copy_file_range")(
        from, at, to, there, size, flags);
}
ssize_t sendfile(int to, int from, off_t* at, std::size_t size) noexcept {
    if (fails("write", Place(to), Room::needed)) return -1;
    return next<ssize_t(int, int, off_t*, std::size_t)>("sendfile")(to, from, at, size);
}

/// The file is closed all the same, as by the kernel.
int close(int file) {
    const bool isFailing = fails("close", Place(file));
    const int error = errno;
    const int result = next<int(int)>("close")(file);
    if (!isFailing) return result;
    errno = error;
    return -1;
}

// Calls on one open file, which go through or fail: CALL(name, what follows the file).
#define OF_FILE(name, label, room, ...)             \
    if (fails(label, Place(file), room)) return -1; \
    return next<int(decltype(file) __VA_OPT__(, ) __VA_ARGS__)>(#name)

int fsync(int file) { OF_FILE(fsync, "fsync", Room::none)(file); }
int fdatasync(int file) { OF_FILE(fdatasync, "fsync", Room::none)(file); }
int flock(int file, int how) noexcept { OF_FILE(flock, "flock", Room::none, int)(file, how); }
int ftruncate(int file, off_t size) noexcept {
    OF_FILE(ftruncate, "truncate", Room::none, off_t)(file, size);
}
int fchmod(int file, mode_t mode) noexcept { OF_FILE(fchmod, "chmod", Room::none, mode_t)(file, mode); }

#define FCNTL(name)                                                                      \
    int name(int file, int command, ...) {                                               \
        std::va_list rest;                                                               \
        va_start(rest, command);                                                         \
        void* argument = va_arg(rest, void*);                                            \
        va_end(rest);                                                                    \
        if (command == F_OFD_SETLK || command == F_OFD_SETLKW || command == F_OFD_GETLK) \
            if (fails("flock", Place(file))) return -1;                                  \
        return next<int(int, int, ...)>(#name)(file, command, argument);                 \
    }
FCNTL(fcntl)
FCNTL(fcntl64)

// Calls on a path.
int rename(const char* from, const char* to) noexcept {
    if (fails("rename", Place(to))) return -1;
    return next<int(const char*, const char*)>("rename")(from, to);
}
int renameat(int folder, const char* from, int there, const char* to) noexcept {
    if (fails("rename", Place(there, to))) return -1;
    return next<int(int, const char*, int, const char*)>("renameat")(folder, from, there, to);
}
int renameat2(int folder, const char* from, int there, const char* to, unsigned flags) noexcept {
    if (fails("rename", Place(there, to))) return -1;
    return next<int(int, const char*, int, const char*, unsigned)>("renameat2")(folder, from, there, to,
                                                                                flags);
}
int link(const char* from, const char* to) noexcept {
    if (fails("link", Place(to), Room::needed)) return -1;
    return next<int(const char*, const char*)>("link")(from, to);
}
int linkat(int folder, const char* from, int there, const char* to, int flags) noexcept {
    if (fails("link", Place(there, to), Room::needed)) return -1;
    return next<int(int, const char*, int, const char*, int)>("linkat")(folder, from, there, to, flags);
}

#define OF_PATH(name, label, room)                      \
    int name(const char* path) noexcept {               \
        if (fails(label, Place(path), room)) return -1; \
        return next<int(const char*)>(#name)(path);     \
    }
OF_PATH(unlink, "unlink", Room::none)
OF_PATH(rmdir, "unlink", Room::none)
OF_PATH(remove, "unlink", Room::none)

int unlinkat(int folder, const char* path, int flags) noexcept {
    if (fails("unlink", Place(folder, path))) return -1;
    return next<int(int, const char*, int)>("unlinkat")(folder, path, flags);
}
int mkdir(const char* path, mode_t mode) noexcept {
    if (fails("mkdir", Place(path), Room::needed)) return -1;
    return next<int(const char*, mode_t)>("mkdir")(path, mode);
}
int mkdirat(int folder, const char* path, mode_t mode) noexcept {
    if (fails("mkdir", Place(folder, path), Room::needed)) return -1;
    return next<int(int, const char*, mode_t)>("mkdirat")(folder, path, mode);
}

DIR* opendir(const char* path) {
    if (fails("opendir", Place(path))) return nullptr;
    return next<DIR*(const char*)>("opendir")(path);
}
DIR* fdopendir(int file) {
    if (fails("opendir", Place(file))) return nullptr;
    return next<DIR*(int)>("fdopendir")(file);
}
dirent* readdir(DIR* folder) {
    if (fails("readdir", Place(::dirfd(folder)))) return nullptr;
    return next<dirent*(DIR*)>("readdir")(folder);
}
dirent64* readdir64(DIR* folder) {
    if (fails("readdir", Place(::dirfd(folder)))) return nullptr;
    return next<dirent64*(DIR*)>("readdir64")(folder);
}

#define STAT(name, record)                                                  \
    int name(const char* path, struct record* status) noexcept {            \
        if (fails("stat", Place(path))) return -1;                          \
        return next<int(const char*, struct record*)>(#name)(path, status); \
    }
#define FSTAT(name, record)                                         \
    int name(int file, struct record* status) noexcept {            \
        if (fails("stat", Place(file))) return -1;                  \
        return next<int(int, struct record*)>(#name)(file, status); \
    }
#define FSTATAT(name, record)                                                                        \
    int name(int folder, const char* path, struct record* status, int flags) noexcept {              \
        if (fails("stat", Place(folder, path))) return -1;                                           \
        return next<int(int, const char*, struct record*, int)>(#name)(folder, path, status, flags); \
    }
STAT(stat, stat)
STAT(lstat, stat)
STAT(stat64, stat64)
STAT(lstat64, stat64)
FSTAT(fstat, stat)
FSTAT(fstat64, stat64)
FSTATAT(fstatat, stat)
FSTATAT(fstatat64, stat64)

int access(const char* path, int how) noexcept {
    if (fails("access", Place(path))) return -1;
    return next<int(const char*, int)>("access")(path, how);
}
int faccessat(int folder, const char* path, int how, int flags) noexcept {
    if (fails("access", Place(folder, path))) return -1;
    return next<int(int, const char*, int, int)>("faccessat")(folder, path, how, flags);
}
char* realpath(const char* path, char* resolved) noexcept {
    if (fails("realpath", Place(path))) return nullptr;
    return next<char*(const char*, char*)>("realpath")(path, resolved);
}
ssize_t readlink(const char* path, char* text, std::size_t size) noexcept {
    if (fails("readlink", Place(path))) return -1;
    return next<ssize_t(const char*, char*, std::size_t)>("readlink")(path, text, size);
}

}  // extern "C"

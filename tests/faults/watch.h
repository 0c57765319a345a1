// What the preloaded library was told, and what becomes of each call: see injector.cpp.

#pragma once

#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>
#include <string_view>

namespace {

template <class Function>
Function* next(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

/// A copy: the program may change its environment.
const char* told(const char* name) {
    const char* value = std::getenv(name);
    return value ? ::strdup(value) : "";
}

/// Tells whether a thread is in this library already: what it calls may call in again.
class Work {
  public:
    Work() { ++depth(); }
    ~Work() { --depth(); }
    Work(const Work&) = delete;
    Work& operator=(const Work&) = delete;
    bool isOutermost() const { return depth() == 1; }

  private:
    static int& depth() {
        static thread_local int calls = 0;
        return calls;
    }
};

/// What the environment told.
struct Plan {
    std::string_view folder = told("FAULTS_FOLDER");
    long at = std::atol(told("FAULTS_AT"));
    std::string_view action = told("FAULTS_DO");
    int error = std::atoi(told("FAULTS_DO"));
    long later = std::atol(told("FAULTS_LATER"));
    int log = openLog();

  private:
    static int openLog() {
        const int file =
            next<int(const char*, int, ...)>("open")(told("FAULTS_LOG"), O_WRONLY | O_APPEND | O_CREAT, 0600);
        if (file < 0) return file;
        const int high = next<int(int, int, ...)>("fcntl")(file, F_DUPFD_CLOEXEC, 900);
        next<int(int)>("close")(file);
        return high;
    }
};

const Plan& plan() {
    static const Plan made;
    return made;
}

/// The full path that a call is about.
struct Place {
    explicit Place(const char* path) : Place(AT_FDCWD, path) {}
    explicit Place(int file) { nameOf(file); }
    Place(int folder, const char* path) {
        if (!path) return;
        if (path[0] == '/') {
            std::snprintf(text, sizeof text, "%s", path);
            return;
        }
        folder == AT_FDCWD ? currentFolder() : nameOf(folder);
        const std::size_t length = std::strlen(text);
        if (path[0] != '\0') std::snprintf(text + length, sizeof text - length, "/%s", path);
    }

    /// False also of calls that this library's own work leads to.
    bool isWatched() const {
        const Work own;
        if (!own.isOutermost()) return false;
        const std::string_view folder = plan().folder;
        const std::string_view path = text;
        return !folder.empty() && path.starts_with(folder) &&
               (path.size() == folder.size() || path[folder.size()] == '/');
    }

    char text[2 * PATH_MAX] = "";

  private:
    void read(const char* link) {
        const ssize_t size = next<ssize_t(const char*, char*, std::size_t)>("readlink")(link, text, PATH_MAX);
        text[size < 0 ? 0 : size] = '\0';
    }
    void nameOf(int file) {
        char link[64];
        std::snprintf(link, sizeof link, "/proc/self/fd/%d", file);
        read(link);
    }
    void currentFolder() { read("/proc/self/cwd"); }
};

enum class Fate { proceeds, fails, isCut };
enum class Room { none, needed };  ///< whether a call takes room on the disk

void note(long number, const char* call, const Place& place) {
    char line[2 * PATH_MAX + 64];
    const int size = std::snprintf(line, sizeof line, "%ld %s %s\n", number, call, place.text);
    (void)!next<ssize_t(int, const void*, std::size_t)>("write")(plan().log, line,
                                                                 static_cast<std::size_t>(size));
}

/// Has the kernel kill the program, whatever it does then.
void killLater() {
    sigevent kill{};
    kill.sigev_notify = SIGEV_SIGNAL;
    kill.sigev_signo = SIGKILL;
    timer_t timer{};
    const itimerspec at{
        .it_interval = {},
        .it_value = {.tv_sec = plan().later / 1'000'000, .tv_nsec = plan().later % 1'000'000 * 1000 + 1}};
    if (::timer_create(CLOCK_MONOTONIC, &kill, &timer) == 0) ::timer_settime(timer, 0, &at, nullptr);
}

/// The data folder has another name from now on, as when somebody renames it or its disk is unmounted.
void renameFolder() {
    const std::string folder(plan().folder);
    next<int(const char*, const char*)>("rename")((folder + "/data").c_str(), (folder + "/gone").c_str());
}

/// Counts a call and decides what becomes of it; sets errno when it fails.
Fate fateOf(const char* call, const Place& place, Room room = Room::none) {
    static std::atomic<long> calls = 0;
    static std::atomic<bool> isFull = false;
    const int before = errno;
    if (!place.isWatched()) {
        errno = before;
        return Fate::proceeds;
    }
    const long number = ++calls;
    note(number, call, place);
    errno = before;
    const bool isHere = number == plan().at;
    if (isHere && plan().action == "kill") ::kill(::getpid(), SIGKILL);
    if (isHere && plan().action == "kill-later") killLater();
    if (isHere && plan().action == "vanish") renameFolder();
    if (plan().action == "kill-later" || plan().action == "vanish") return Fate::proceeds;
    if (isHere && plan().action == "short") return Fate::isCut;
    if (plan().action == "full") {
        const bool wasFull = isFull;
        isFull = wasFull || isHere;
        if (!isFull || room == Room::none) return Fate::proceeds;
        errno = ENOSPC;
        return wasFull ? Fate::fails : Fate::isCut;
    }
    if (!isHere) return Fate::proceeds;
    errno = plan().error;
    return Fate::fails;
}

bool fails(const char* call, const Place& place, Room room = Room::none) {
    const Fate fate = fateOf(call, place, room);
    return fate == Fate::fails || (fate == Fate::isCut && room == Room::needed && plan().action == "full");
}

}  // namespace

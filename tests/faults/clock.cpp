// Preloaded beside injector.cpp: the time of day stands still at what a file says, so that a minute ends when
// the test wants it to. FAULTS_CLOCK names the file: eight bytes, the seconds since 1970. Alarms at a time of
// day never ring; whoever waits is woken by something else.

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>

namespace {

template <class Function>
Function* next(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

/// What the file says, as it is written; null without one.
const volatile std::int64_t* told() {
    static const volatile std::int64_t* const seconds = [] {
        const char* path = std::getenv("FAULTS_CLOCK");
        const int file = path ? next<int(const char*, int, ...)>("open")(path, O_RDONLY) : -1;
        if (file < 0) return static_cast<const std::int64_t*>(nullptr);
        void* map = ::mmap(nullptr, sizeof(std::int64_t), PROT_READ, MAP_SHARED, file, 0);
        next<int(int)>("close")(file);
        return map == MAP_FAILED ? nullptr : static_cast<const std::int64_t*>(map);
    }();
    return seconds;
}

}  // namespace

extern "C" int clock_gettime(clockid_t clock, timespec* time) noexcept {
    if (clock != CLOCK_REALTIME || !told())
        return next<int(clockid_t, timespec*)>("clock_gettime")(clock, time);
    *time = {.tv_sec = static_cast<time_t>(*told()), .tv_nsec = 0};
    return 0;
}

extern "C" int timerfd_settime(int file, int flags, const itimerspec* at, itimerspec* before) noexcept {
    const auto real = next<int(int, int, const itimerspec*, itimerspec*)>("timerfd_settime");
    if ((flags & TFD_TIMER_ABSTIME) == 0 || !told()) return real(file, flags, at, before);
    constexpr itimerspec never{.it_interval = {}, .it_value = {.tv_sec = 1'000'000'000, .tv_nsec = 0}};
    return real(file, 0, &never, before);
}

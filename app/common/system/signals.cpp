#include "app/common/system/signals.h"

#include <sys/signalfd.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <system_error>

namespace tappora {
namespace {

void require(bool succeeded, const char* what) {
    if (!succeeded) throw std::system_error(errno, std::generic_category(), what);
}

}  // namespace

SignalQueue::SignalQueue(std::initializer_list<int> signals) {
    sigset_t set{};
    sigemptyset(&set);
    for (const int signal : signals) sigaddset(&set, signal);
    file_ = tapcore::Descriptor(::signalfd(-1, &set, SFD_NONBLOCK | SFD_CLOEXEC));
    require(file_.isOpen(), "signals");
    require(::sigprocmask(SIG_BLOCK, &set, &before_) == 0, "signals");
}

SignalQueue::~SignalQueue() {
    while (next()) {
    }
    ::sigprocmask(SIG_SETMASK, &before_, nullptr);
}

std::optional<int> SignalQueue::next() const {
    signalfd_siginfo info{};
    if (::read(file_.get(), &info, sizeof info) != sizeof info) return std::nullopt;
    return static_cast<int>(info.ssi_signo);
}

Alarm::Alarm() : file_(::timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC)) {
    require(file_.isOpen(), "timer");
}

bool Alarm::set(tapcore::Instant moment) const {
    const auto since = moment.time_since_epoch();
    const auto seconds = std::chrono::floor<std::chrono::seconds>(since);
    itimerspec at{};
    at.it_value.tv_sec = seconds.count();
    at.it_value.tv_nsec = std::chrono::nanoseconds(since - seconds).count();
    const int flags = TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET;
    const bool isSet = ::timerfd_settime(file_.get(), flags, &at, nullptr) == 0;
    require(isSet || errno == ECANCELED, "timer");
    return isSet;
}

}  // namespace tappora

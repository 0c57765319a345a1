#include "app/common/system/alarm.h"

#include <sys/timerfd.h>

#include <cerrno>
#include <chrono>
#include <ctime>
#include <system_error>

namespace tappora {
namespace {

void require(bool succeeded) {
    if (!succeeded) throw std::system_error(errno, std::generic_category(), "timer");
}

}  // namespace

Alarm::Alarm() : file_(::timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC)) {
    require(file_.isOpen());
}

bool Alarm::set(tapcore::Instant moment) const {
    const auto since = moment.time_since_epoch();
    const auto seconds = std::chrono::floor<std::chrono::seconds>(since);
    itimerspec at{};
    at.it_value.tv_sec = seconds.count();
    at.it_value.tv_nsec = std::chrono::nanoseconds(since - seconds).count();
    const int flags = TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET;
    const bool isSet = ::timerfd_settime(file_.get(), flags, &at, nullptr) == 0;
    require(isSet || errno == ECANCELED);
    return isSet;
}

}  // namespace tappora

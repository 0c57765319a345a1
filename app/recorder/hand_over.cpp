#include "app/recorder/hand_over.h"

#include <sys/eventfd.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace tappora {

void Lines::add(std::string line) {
    if (kept.size() < most) kept.push_back(std::move(line));
    else ++dropped;
}

void Lines::add(Lines&& later) {
    for (std::string& line : later.kept) add(std::move(line));
    dropped += later.dropped;
}

bool Harvest::isEmpty() const {
    return !hasEndedMinute && counts.days().empty() && drops == 0 && !devices && told.kept.empty() &&
           watched.kept.empty();
}

void Harvest::add(Harvest&& later) {
    at = later.at;
    counts.add(later.counts);
    hasEndedMinute = hasEndedMinute || later.hasEndedMinute;
    drops += later.drops;
    if (later.devices) devices = std::move(later.devices);
    told.add(std::move(later.told));
    watched.add(std::move(later.watched));
}

HandOver::HandOver() : bell_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    if (!bell_.isOpen()) throw std::system_error(errno, std::generic_category(), "hand-over");
}

void HandOver::give(Harvest&& harvest) {
    if (harvest.isEmpty()) return;
    const std::lock_guard lock(mutex_);
    harvest_.add(std::move(harvest));
    given_.notify_one();
    ::eventfd_write(bell_.get(), 1);
}

void HandOver::end(std::exception_ptr failure) {
    const std::lock_guard lock(mutex_);
    hasEnded_ = true;
    failure_ = std::move(failure);
    given_.notify_one();
    ::eventfd_write(bell_.get(), 1);
}

std::optional<tapcore::Calendar> HandOver::newCalendar() {
    const std::lock_guard lock(mutex_);
    return std::exchange(calendar_, std::nullopt);
}

std::optional<Harvest> HandOver::take() {
    std::unique_lock lock(mutex_);
    given_.wait(lock, [&] { return hasEnded_ || !harvest_.isEmpty(); });
    if (!harvest_.isEmpty()) {
        eventfd_t rings = 0;
        if (!hasEnded_) ::eventfd_read(bell_.get(), &rings);
        return std::exchange(harvest_, {});
    }
    if (failure_) std::rethrow_exception(failure_);
    return std::nullopt;
}

bool HandOver::endsWithin(std::chrono::milliseconds time) {
    std::unique_lock lock(mutex_);
    return given_.wait_for(lock, time, [&] { return hasEnded_; });
}

void HandOver::changeCalendar(tapcore::Calendar calendar) {
    const std::lock_guard lock(mutex_);
    calendar_ = std::move(calendar);
}

}  // namespace tappora

#include "app/recorder/pause_switch.h"

#include <sys/eventfd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace tappora {

PauseSwitch::PauseSwitch() : bell_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    if (!bell_.isOpen()) throw std::system_error(errno, std::generic_category(), "pause");
}

void PauseSwitch::pause(Pause pause) {
    const std::lock_guard lock(mutex_);
    state_.pause = pause;
    ring();
}

void PauseSwitch::resume() {
    const std::lock_guard lock(mutex_);
    if (!state_.pause) return;
    noteEnd(std::chrono::milliseconds(0));
    state_.pause.reset();
    ring();
}

void PauseSwitch::toggle(tapcore::Instant now) {
    if (state().pause) resume();
    else pause({.since = now});
}

void PauseSwitch::endOverdue(tapcore::Instant now) {
    const std::lock_guard lock(mutex_);
    if (!state_.pause || !state_.pause->until || now < *state_.pause->until) return;
    noteEnd(now - *state_.pause->until);
    state_.pause.reset();
    ring();
}

void PauseSwitch::setLocked(bool isLocked) {
    const std::lock_guard lock(mutex_);
    if (state_.isLocked == isLocked) return;
    if (!isLocked) noteEnd(std::chrono::milliseconds(0));
    state_.isLocked = isLocked;
    ring();
}

void PauseSwitch::setLockProblem(const std::string& why) {
    const std::lock_guard lock(mutex_);
    if (state_.lockProblem == why) return;
    state_.lockProblem = why;
    ring();
}

PauseSwitch::State PauseSwitch::state() const {
    const std::lock_guard lock(mutex_);
    return state_;
}

bool PauseSwitch::isPaused(tapcore::Instant now, std::chrono::milliseconds ago) const {
    const std::lock_guard lock(mutex_);
    const auto& pause = state_.pause;
    if (state_.isLocked || (pause && (!pause->until || now - ago < *pause->until))) return true;
    return Clock::now() - ago < ended_;
}

void PauseSwitch::takeNote() {
    eventfd_t rings = 0;
    ::eventfd_read(bell_.get(), &rings);
}

void PauseSwitch::noteEnd(std::chrono::milliseconds ago) { ended_ = std::max(ended_, Clock::now() - ago); }

void PauseSwitch::ring() { ::eventfd_write(bell_.get(), 1); }

}  // namespace tappora

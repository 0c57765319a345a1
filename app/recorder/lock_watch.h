#pragma once

#include <thread>

#include "app/recorder/pause_switch.h"

namespace tappora {

/// Has nothing count while the user's session is locked, as logind says it on the system bus; a login screen
/// counts as locked. Listens on a thread of its own, so that no disk delays it, as long as it lives. Where
/// there is no bus or no logind, or this build cannot listen, that is the switch's lock problem, and looked
/// for again.
class LockWatch {
  public:
    /// Waits until it is known whether the session is locked now, for five seconds at most.
    explicit LockWatch(PauseSwitch& pauses);
    /// What was locked counts as unlocked.
    ~LockWatch();
    LockWatch(const LockWatch&) = delete;
    LockWatch& operator=(const LockWatch&) = delete;

  private:
    PauseSwitch& pauses_;
    std::jthread listening_;
};

}  // namespace tappora

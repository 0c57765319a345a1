#pragma once

#include <chrono>
#include <mutex>
#include <optional>
#include <string>

#include "app/common/control/recorder_status.h"
#include "core/foundation/calendar.h"
#include "core/foundation/descriptor.h"

namespace tappora {

/// Whether presses count, for all threads: the one that reads the devices asks, and waits for nobody; the
/// others change it, which takes effect at once.
class PauseSwitch {
  public:
    struct State {
        std::optional<Pause> pause{};
        bool isLocked = false;      ///< the session
        std::string lockProblem{};  ///< why that is not known; "" when it is

        bool operator==(const State&) const = default;
    };

    PauseSwitch();

    void pause(Pause pause);
    /// Ends the pause, when there is one.
    void resume();
    /// Does one or the other.
    void toggle(tapcore::Instant now);
    /// Ends a pause whose time has come.
    void endOverdue(tapcore::Instant now);
    void setLocked(bool isLocked);
    /// Why it is not known whether the session is locked: what was last known holds. "" when it is known.
    void setLockProblem(const std::string& why);

    State state() const;
    /// Whether what happened that long ago does not count; it is `now`. A pause that has a time ends at it,
    /// whether or not anybody has ended it yet.
    bool isPaused(tapcore::Instant now, std::chrono::milliseconds ago) const;

    /// Readable when the state has changed, until that is taken note of.
    int descriptor() const { return bell_.get(); }
    void takeNote();

  private:
    using Clock = std::chrono::steady_clock;

    /// Of a pause or a lock, so long ago.
    void noteEnd(std::chrono::milliseconds ago);
    void ring();

    mutable std::mutex mutex_;
    State state_;
    Clock::time_point ended_ = Clock::time_point::min();  ///< the last pause or lock
    tapcore::Descriptor bell_;
};

}  // namespace tappora

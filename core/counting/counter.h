#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "core/counting/tally.h"

namespace tapcore {

/// Counts live, in fixed buffers: what an event handler bumps on each press and what is drained into a
/// `Tally` at the end of each stretch. The press path neither allocates nor hashes. One counter serves one
/// thread.
class Counter {
  public:
    /// Key codes from here up are not counted.
    static constexpr std::size_t keyCodes = 128;

    enum class Button { left, right, middle };

    struct Drained {
        Tally tally;
        std::int64_t peakPerMinute = 0;
    };

    /// Counts a key, and the chord too when the modifiers make one. Nothing for a code of 128 or above.
    void press(KeyCode keyCode, Modifiers modifiers) {
        if (keyCode >= keyCodes) return;
        ++presses_[(modifiers.rawValue & (Modifiers::count - 1)) * keyCodes + keyCode];
    }

    void click(Button button) { ++clicks_[static_cast<std::size_t>(button)]; }
    void scroll() { ++scrolls_; }
    /// Adds a distance in screen points, when it is above 0 and below 4000: larger ones are jumps of the
    /// pointer.
    void moved(double by) {
        if (by > 0 && by < 4000) moved_ += by;
    }

    /// Ends the minute: the busiest one is kept. For the counting clock to call once a minute.
    void closeMinute();

    /// What was counted since the last drain, all of it in `hour`, and the busiest closed minute; both start
    /// again. The current minute goes on.
    Drained drain(std::int64_t hour);

    /// Throws away what was counted, the current minute included; the busiest minute stays.
    void discard();

    /// Presses and clicks not yet drained.
    std::int64_t pending() const;
    std::int64_t pendingClicks() const;

    /// Presses since the last closed minute.
    std::int32_t thisMinute() const { return static_cast<std::int32_t>(undrained() - minuteStart_); }
    std::int32_t peak() const { return peak_; }

  private:
    // Unsigned, so that a count too far wraps; 32 bits are drained long before.
    using Count = std::uint32_t;
    Count undrained() const;
    void clearCounts();

    // The one number that a press bumps: by modifiers, then key code. What a key counts with all modifiers,
    // and the presses of the minute, are sums over these, taken once a minute.
    std::array<Count, Modifiers::count * keyCodes> presses_{};
    Count minuteStart_ = 0;  ///< what was undrained when the minute began, less what it drained itself
    std::int32_t peak_ = 0;
    std::array<Count, 3> clicks_{};
    Count scrolls_ = 0;
    double moved_ = 0;
};

}  // namespace tapcore

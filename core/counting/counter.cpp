#include "core/counting/counter.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace tapcore {

Counter::Count Counter::undrained() const {
    return std::accumulate(presses_.begin(), presses_.end(), Count{0});
}

void Counter::closeMinute() {
    peak_ = std::max(peak_, thisMinute());
    minuteStart_ = undrained();
}

Counter::Drained Counter::drain(std::int64_t hour) {
    Drained drained;
    drained.peakPerMinute = peak_;
    for (std::size_t code = 0; code < keyCodes; ++code) {
        const auto keyCode = static_cast<KeyCode>(code);
        Count all = 0;
        for (std::size_t bits = 0; bits < Modifiers::count; ++bits) all += presses_[bits * keyCodes + code];
        drained.tally.add(keyCode, hour, static_cast<std::int32_t>(all));
    }
    for (std::size_t cell = 0; cell < presses_.size(); ++cell) {
        const Modifiers modifiers(static_cast<std::uint8_t>(cell / keyCodes));
        const auto keyCode = static_cast<KeyCode>(cell % keyCodes);
        drained.tally.add(Tally::Chord{modifiers, keyCode}, hour, static_cast<std::int32_t>(presses_[cell]));
    }
    drained.tally.add(
        Tally::MouseHour{static_cast<std::int32_t>(clicks_[0]), static_cast<std::int32_t>(clicks_[1]),
                         static_cast<std::int32_t>(clicks_[2]), static_cast<std::int32_t>(scrolls_),
                         std::llround(moved_)},
        hour);
    minuteStart_ -= undrained();
    clearCounts();
    peak_ = 0;
    return drained;
}

void Counter::discard() {
    clearCounts();
    minuteStart_ = 0;
}

std::int64_t Counter::pending() const {
    return std::accumulate(presses_.begin(), presses_.end(), std::int64_t{0});
}

std::int64_t Counter::pendingClicks() const {
    std::int64_t sum = 0;
    for (const Count count : clicks_) sum += count;
    return sum;
}

void Counter::clearCounts() {
    presses_.fill(0);
    clicks_.fill(0);
    scrolls_ = 0;
    moved_ = 0;
}

}  // namespace tapcore

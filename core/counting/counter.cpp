#include "core/counting/counter.h"

#include <algorithm>
#include <cmath>

namespace tapcore {

void Counter::closeMinute() {
    peak_ = std::max(peak_, thisMinute());
    thisMinute_ = 0;
}

Counter::Drained Counter::drain(std::int64_t hour) {
    Drained drained;
    drained.peakPerMinute = peak_;
    for (std::size_t code = 0; code < keyCodes; ++code)
        drained.tally.add(static_cast<KeyCode>(code), hour, static_cast<std::int32_t>(keys_[code]));
    for (std::size_t cell = 0; cell < chords_.size(); ++cell) {
        const Modifiers modifiers(static_cast<std::uint8_t>(cell / keyCodes));
        const auto keyCode = static_cast<KeyCode>(cell % keyCodes);
        drained.tally.add(Tally::Chord{modifiers, keyCode}, hour, static_cast<std::int32_t>(chords_[cell]));
    }
    drained.tally.add(
        Tally::MouseHour{static_cast<std::int32_t>(clicks_[0]), static_cast<std::int32_t>(clicks_[1]),
                         static_cast<std::int32_t>(clicks_[2]), static_cast<std::int32_t>(scrolls_),
                         std::llround(moved_)},
        hour);
    clearCounts();
    peak_ = 0;
    return drained;
}

void Counter::discard() {
    clearCounts();
    thisMinute_ = 0;
}

std::int64_t Counter::pending() const {
    std::int64_t sum = 0;
    for (const Count count : keys_) sum += count;
    return sum;
}

std::int64_t Counter::pendingClicks() const {
    std::int64_t sum = 0;
    for (const Count count : clicks_) sum += count;
    return sum;
}

void Counter::clearCounts() {
    keys_.fill(0);
    chords_.fill(0);
    clicks_.fill(0);
    scrolls_ = 0;
    moved_ = 0;
}

}  // namespace tapcore

#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/counting/key_face.h"
#include "core/counting/tally.h"
#include "core/practice/letter_stats.h"

namespace tapcore {

/// What practising a letter would spare, by how often it is typed in daily life and how long it takes in
/// practice. An estimate: daily typing is counted and not timed.
struct LetterGain {
    std::string letter;
    std::int64_t presses = 0;       ///< of its key, in the period
    double share = 0;               ///< of all presses of letters that were practised
    std::int64_t milliseconds = 0;  ///< of a press, in practice
    double minutesADay = 0;         ///< what its presses take on a day with typing, at that pace
    double sparedADay = 0;          ///< in minutes, were it as fast as half of the practised letters

    bool operator==(const LetterGain&) const = default;
};

/// So many timed presses are needed to say how long a letter takes.
inline constexpr std::int64_t fewestTimed = 20;

/// What spares less, in minutes a day, is not worth saying.
inline constexpr double leastSpared = 0.1;

/// The letters that take longer than half of those practised, by what they would spare, the most first.
/// `practised` are the times on the layout of `legends`; `typingDays` is on how many days `counts` was typed.
/// Nothing for fewer than three letters with times, or without a day.
std::vector<LetterGain> letterGains(const Tally::KeyCounts& counts, const Legends& legends,
                                    const LetterCounts& practised, std::int64_t typingDays);

}  // namespace tapcore

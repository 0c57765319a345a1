#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "core/counting/day.h"
#include "core/practice/letter_stats.h"
#include "core/practice/practice_day.h"

namespace tapcore {

/// All days of practice, and what is asked of them together.
struct PracticeHistory {
    std::map<Day, PracticeDay> days;

    /// The counters of all days, or of those since one, on one layout or over all of them.
    LetterCounts totals(const std::optional<std::string>& layout) const;
    LetterCounts recent(const Day& since, const std::optional<std::string>& layout) const;

    /// The fastest lesson in words per minute, of all days or of those since one; 0 without one. On one
    /// layout, or any.
    std::int64_t best(const std::optional<std::string>& layout) const;
    std::int64_t bestSince(const Day& since, const std::optional<std::string>& layout) const;

    /// Whether so many seconds, or at least one, were practised on a day.
    bool reached(const Day& day, std::int64_t goalSeconds) const;
    std::int64_t seconds(const Day& day) const;

    bool operator==(const PracticeHistory&) const = default;
};

}  // namespace tapcore

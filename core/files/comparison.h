#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "core/counting/day.h"
#include "core/counting/tally.h"
#include "core/files/store.h"

namespace tapcore {

/// How a day's typing compares with what is usual by the same time of day.
namespace Comparison {

/// How many days with typing make the usual, how far back they are looked for, and how few are enough.
inline constexpr std::size_t mostDays = 14;
inline constexpr std::int64_t daysBack = 60;
inline constexpr std::size_t fewestDays = 3;

using ByHour = Tally::Hourly<std::int64_t>;

/// By how many per cent the presses of `today` differ from the mean of the `usual` days, both from midnight
/// on and for so many hours: 25 for a quarter more, rounded half away from zero. After 9.25 hours, a quarter
/// of what a usual day has from nine to ten counts. Usual days without a press are left out; nothing when
/// fewer than three are left, when they have no press in those hours, or for a figure past 64 bits.
std::optional<std::int64_t> percent(const ByHour& today, const std::vector<ByHour>& usual,
                                    double hoursPassed);

/// The presses by hour of the last 14 days before `today` that have any, looking back 60 days; the latest
/// first.
std::vector<ByHour> usualDays(const Store& store, const Day& today, const Calendar& calendar,
                              FileProblems* problems = nullptr);

}  // namespace Comparison

}  // namespace tapcore

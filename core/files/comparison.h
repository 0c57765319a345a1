#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "core/counting/day.h"
#include "core/counting/tally.h"
#include "core/files/store.h"

namespace tapcore {

/// How a day's typing stands against what is usual by the same hour.
namespace Comparison {

/// How far back the usual is looked for, and how many of those days must have typing.
inline constexpr std::int64_t daysBack = 14;
inline constexpr std::size_t fewestDays = 3;

using ByHour = Tally::Hourly<std::int64_t>;

/// By how many per cent the presses of `today` differ from the mean of the `usual` days, both from midnight
/// up to and with `hour`: 25 for a quarter more, rounded half away from zero. Usual days without a press are
/// left out; nothing when fewer than three are left, when they have no press in those hours, or for a figure
/// past 64 bits.
std::optional<std::int64_t> percent(const ByHour& today, const std::vector<ByHour>& usual, std::int64_t hour);

/// The presses by hour of each of the 14 days before `today`.
std::vector<ByHour> usualDays(const Store& store, const Day& today, const Calendar& calendar,
                              FileProblems* problems = nullptr);

}  // namespace Comparison

}  // namespace tapcore

#pragma once

#include <cstdint>
#include <vector>

#include "core/foundation/calendar.h"

namespace tapcore {

/// When to remind of practising.
namespace PracticeReminder {

/// The times of day for so many reminders a day, in minutes after midnight: one at 18:00, more of them
/// spread evenly from 9:00 to 18:00, at most 10.
std::vector<std::int64_t> minutes(std::int64_t count);

/// The moments of the coming reminders, ascending, over so many days from today on: without today's once
/// today's practice is done, and without those that are past.
std::vector<Instant> plan(Instant now, std::int64_t count, bool todayDone, std::int64_t days,
                          const Calendar& calendar);

}  // namespace PracticeReminder

}  // namespace tapcore

#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/foundation/calendar.h"

namespace tappora {

/// When a pause ends that the user asks for in words: "30m", "2h", or "until 14:00", the next time that
/// clocks show this; nothing for no words. UsageError for anything else, for a time that clocks skip, and for
/// a pause that is longer than `longestPause`.
std::optional<tapcore::Instant> pauseEnd(const std::vector<std::string>& words, tapcore::Instant now,
                                         const tapcore::Calendar& calendar);

/// Why a pause cannot end then; "" when it can.
std::string objectionTo(tapcore::Instant end, tapcore::Instant now);

}  // namespace tappora

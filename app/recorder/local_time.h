#pragma once

#include <optional>
#include <string_view>

#include "core/foundation/calendar.h"

namespace tappora {

/// The moment at which clocks of the calendar's zone show "2026-09-20T09:00:00"; nothing for another text,
/// and for a time that no clock there shows (31 February, an hour that summer time skips).
std::optional<tapcore::Instant> momentOf(std::string_view text, const tapcore::Calendar& calendar);

}  // namespace tappora

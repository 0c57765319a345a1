#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/foundation/calendar.h"

namespace tappora {

/// The moment at which clocks of the calendar's zone show "2026-09-20T09:00:00"; nothing for another text,
/// and for a time that no clock there shows (31 February, an hour that summer time skips).
std::optional<tapcore::Instant> momentOf(std::string_view text, const tapcore::Calendar& calendar);

/// A moment for other programs to read, to the second: "2026-09-20T07:00:00Z".
std::string utcText(tapcore::Instant moment);
/// The moment that such a text names; nothing for another text.
std::optional<tapcore::Instant> utcMoment(std::string_view text);

/// A moment for people, as clocks of the calendar's zone show it: "14:00", and on another day than `now`
/// "2026-09-21 14:00".
std::string clockText(tapcore::Instant moment, tapcore::Instant now, const tapcore::Calendar& calendar);

}  // namespace tappora

#pragma once

#include "app/recorder/counting_clock.h"
#include "app/recorder/event_rules.h"
#include "app/recorder/recording.h"
#include "core/foundation/calendar.h"

namespace tappora {

/// Counts a recording at its own times, the first of its events at `starting`. The clock is not finished.
void replay(const Recording& recording, tapcore::Instant starting, CountingClock& clock, EventRules& rules);

/// The key that masked ones are written as: "A".
inline constexpr tapcore::KeyCode maskedKey = 0;

/// Whether keys of a recording may be masked without its saying so: many presses of letters and digits, all
/// of "A".
bool maybeMasked(const Recording& recording);

}  // namespace tappora

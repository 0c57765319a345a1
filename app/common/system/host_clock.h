#pragma once

#include <string_view>

#include "core/foundation/calendar.h"

namespace tappora {

/// The calendar of the machine's own clock, as its C library has it: the zone that TZ names, in any form the
/// library takes, else the one the machine is set to. A TZ that is no zone is UTC; a warning says so when the
/// clock is first asked.
tapcore::Calendar hostCalendar();

/// Has every host calendar take note of a zone that the machine was set to meanwhile.
void followHostZone();

/// Whether a value of TZ is a zone: the name of a file of zone data, or rules ("CET-1CEST,M3.5.0,M10.5.0/3").
bool isZone(std::string_view tz);

}  // namespace tappora

#pragma once

#include "app/common/system/environment.h"

namespace tappora {

/// Prints as JSON what the widgets' provider gives a host for each of them now: the families it is offered
/// in, its names in the system's language, the timeline's entries, and the moment after which to ask again.
/// Moments are in UTC, "2026-09-20T14:30:00Z".
void printTimelines(const Environment& environment);

}  // namespace tappora

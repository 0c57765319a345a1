#pragma once

#include <string_view>

#include "core/foundation/calendar.h"

namespace tapcore {

/// The clocks of a zone that has an IANA name ("Europe/Berlin"), or of "UTC". Throws std::invalid_argument
/// naming an unknown one.
Calendar::Offset namedZone(std::string_view name);

}  // namespace tapcore

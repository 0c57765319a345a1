#pragma once

#include <string_view>

namespace tappora {

/// Whether a text is the rules of a time zone, whole, as POSIX writes them: "CET-1CEST,M3.5.0,M10.5.0/3".
/// Names of three letters or more, or of three or more letters, digits and signs in <>; how far UTC is, up to
/// 24 hours; where clocks change, the other name, how far UTC is then, unless that is an hour less, and the
/// two days (Mm.w.d, Jn or n), each with its time if that is not 2 o'clock, up to 167 hours either way. The
/// days may be missing together: then the C library takes those of the United States.
bool isZoneRules(std::string_view text);

}  // namespace tappora

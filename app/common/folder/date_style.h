#pragma once

#include <cstddef>
#include <string>

#include "app/common/system/environment.h"

namespace tappora {

/// How a terminal shows hours: as the setting "appearance.hours" says, else as is usual in the environment's
/// locale of times.
struct DateStyle {
    bool twelveHours = false;

    static DateStyle of(const Environment& environment);

    /// An hour of the day, from 0 to 23: "15" or "3 PM".
    std::string hour(std::size_t hour) const;
};

/// A locale with the choices of its user: "de@fw=sun;hours=h12" has weeks begin with the day that the setting
/// "appearance.firstWeekday" says, and twelve hours where the style has. What is left to the locale is not
/// named.
std::string withDateStyle(const std::string& locale, const Environment& environment);

}  // namespace tappora

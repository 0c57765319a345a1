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

/// A locale in which a week begins with the day that the setting "appearance.firstWeekday" says: "de@fw=sun".
/// The locale itself when that is left to it.
std::string withFirstWeekday(const std::string& locale, const Environment& environment);

}  // namespace tappora

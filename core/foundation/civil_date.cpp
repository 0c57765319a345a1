#include "core/foundation/civil_date.h"

#include <limits>

#include "core/foundation/fatal.h"

namespace tapcore {
namespace {

constexpr std::int64_t daysOfEra = 146'097;   // 400 years, after which the calendar repeats
constexpr std::int64_t eraToEpoch = 719'468;  // from 0000-03-01 to 1970-01-01

std::int64_t inRange(std::int64_t value) {
    if (value < std::numeric_limits<std::int32_t>::min() || value > std::numeric_limits<std::int32_t>::max())
        fatal("a date is out of the calendar's range");
    return value;
}

std::int64_t floorDivide(std::int64_t value, std::int64_t by) {
    return value / by - (value % by < 0 ? 1 : 0);
}

}  // namespace

// Both count years from March, so that a leap day is the last of its year: the days before a month are then
// (153 × month + 2) / 5, with March as month 0. Method: Howard Hinnant, chrono-Compatible Low-Level Date
// Algorithms.

std::int64_t dayNumber(const CivilDate& date) {
    const std::int64_t months = inRange(date.year) * 12 + inRange(date.month) - 3;
    const std::int64_t year = floorDivide(months, 12);
    const std::int64_t daysBefore = (153 * (months - year * 12) + 2) / 5;
    const std::int64_t leapDays = floorDivide(year, 4) - floorDivide(year, 100) + floorDivide(year, 400);
    return inRange(year * 365 + leapDays + daysBefore + inRange(date.day) - 1 - eraToEpoch);
}

CivilDate civilDate(std::int64_t dayNumber) {
    const std::int64_t days = inRange(dayNumber) + eraToEpoch;
    const std::int64_t era = floorDivide(days, daysOfEra);
    const std::int64_t day = days - era * daysOfEra;
    const std::int64_t year = (day - day / 1460 + day / 36'524 - day / 146'096) / 365;
    const std::int64_t dayOfYear = day - (365 * year + year / 4 - year / 100);
    const std::int64_t month = (5 * dayOfYear + 2) / 153;
    return {era * 400 + year + (month >= 10 ? 1 : 0), month >= 10 ? month - 9 : month + 3,
            dayOfYear - (153 * month + 2) / 5 + 1};
}

std::size_t weekdayOf(std::int64_t dayNumber) {
    const std::int64_t sinceSunday = dayNumber + 4;  // 1970-01-01 was a Thursday
    return static_cast<std::size_t>(sinceSunday - floorDivide(sinceSunday, 7) * 7);
}

}  // namespace tapcore

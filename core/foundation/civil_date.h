#pragma once

#include <cstddef>
#include <cstdint>

namespace tapcore {

// Dates of the Gregorian calendar and their arithmetic, before 1582 as well. No zone has a say in it: a date
// that the clocks of a zone once skipped is a date like any other.

/// A date as its three numbers: month 1 to 12, day from 1.
struct CivilDate {
    std::int64_t year = 1970;
    std::int64_t month = 1;
    std::int64_t day = 1;

    bool operator==(const CivilDate&) const = default;
};

/// The number of a date in a row of all days, in which 1970-01-01 is 0. Months and days past their range roll
/// over: 31 February is 3 March. A number past 32 bits is a fatal error.
std::int64_t dayNumber(const CivilDate& date);

/// The date with this number.
CivilDate civilDate(std::int64_t dayNumber);

/// The day of the week of the day with this number, from 0 for Sunday.
std::size_t weekdayOf(std::int64_t dayNumber);

}  // namespace tapcore

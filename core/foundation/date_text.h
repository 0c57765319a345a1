#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "core/foundation/civil_date.h"

namespace tapcore {

/// A date as a locale ("de", "pt-BR") writes it, with its month abbreviated: "Sep 20, 2026" in English. A
/// locale that is not known writes it like English.
std::string dateText(const CivilDate& date, std::string_view locale);

/// A date with its weekday and its month spelled out: "Sunday, September 20, 2026" in English.
std::string longDateText(const CivilDate& date, std::string_view locale);

/// The days from one to another: "September 14 – 20, 2026" in English, "14.–20. September 2026" in German.
/// Blanks in it are ordinary ones.
std::string dateRangeText(const CivilDate& first, const CivilDate& last, std::string_view locale);

/// A month of a year: "October 2026".
std::string monthText(const CivilDate& inMonth, std::string_view locale);

/// The day that a week begins with where the locale is used, from 0 for Sunday: 1 for "de", 0 for "en_US".
std::size_t firstWeekday(std::string_view locale);

}  // namespace tapcore

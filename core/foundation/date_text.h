#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "core/foundation/civil_date.h"

namespace tapcore {

/// Writes dates as a locale ("de", "pt-BR") does, any number of them: what it needs is looked up once. A
/// locale that is not known writes like English. Copies share what they know, and belong to one thread.
class DateWriter {
  public:
    enum class Form {
        usual,  ///< with its month abbreviated: "Sep 20, 2026" in English
        full,   ///< with its weekday and its month spelled out: "Sunday, September 20, 2026"
        month,  ///< the month and the year: "October 2026"
    };

    DateWriter(Form form, std::string_view locale);
    std::string operator()(const CivilDate& date) const;

  private:
    struct Format;
    std::shared_ptr<const Format> format_;
};

/// One date in the usual form.
std::string dateText(const CivilDate& date, std::string_view locale);

/// The days from one to another: "September 14 – 20, 2026" in English, "14.–20. September 2026" in German.
/// Blanks in it are ordinary ones.
std::string dateRangeText(const CivilDate& first, const CivilDate& last, std::string_view locale);

/// Whether a locale tells the time by 12 hours, twice a day: "en_US". Not the locale of machines ("C").
bool usesTwelveHours(std::string_view locale);

/// An hour of the day, from 0 to 23, by 12 hours or by 24: "3 PM" or "15".
std::string hourText(std::size_t hour, bool twelveHours);

/// The same as a locale says it of itself: "en@hours=h12" has twelve, and one that says nothing has 24.
std::string localHourText(std::size_t hour, std::string_view locale);

/// The day that a week begins with where the locale is used, from 0 for Sunday: 1 for "de", 0 for "en_US". A
/// locale may name it itself, by its first three letters: "de@fw=sun".
std::size_t firstWeekday(std::string_view locale);

}  // namespace tapcore

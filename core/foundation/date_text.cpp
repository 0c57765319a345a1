#include "core/foundation/date_text.h"

#include <unicode/ucal.h>
#include <unicode/udat.h>
#include <unicode/udatpg.h>

#include <array>

#include "core/foundation/icu.h"

namespace tapcore {
namespace {

constexpr std::string_view what = "writing a date failed";

/// The locale with the Gregorian calendar, whichever its usual one is.
std::string gregorian(std::string_view locale) {
    UErrorCode status = U_ZERO_ERROR;
    std::array<char, ULOC_FULLNAME_CAPACITY> name{};
    uloc_canonicalize(std::string(locale).c_str(), name.data(), name.size(), &status);
    uloc_setKeywordValue("calendar", "gregorian", name.data(), name.size(), &status);
    if (U_FAILURE(status) || status == U_STRING_NOT_TERMINATED_WARNING) return "en";
    return name.data();
}

std::u16string patternOf(const std::string& locale) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::LocalUDateTimePatternGeneratorPointer patterns(udatpg_open(locale.c_str(), &status));
    std::array<char16_t, 64> pattern{};
    const std::int32_t size =
        udatpg_getBestPattern(patterns.getAlias(), u"yMMMd", 5, pattern.data(), pattern.size(), &status);
    requireIcu(status, what);
    return {pattern.data(), static_cast<std::size_t>(size)};
}

}  // namespace

std::string dateText(const CivilDate& date, std::string_view locale) {
    const std::string name = gregorian(locale);
    const std::u16string pattern = patternOf(name);
    UErrorCode status = U_ZERO_ERROR;
    const icu::LocalUDateFormatPointer format(udat_open(UDAT_PATTERN, UDAT_PATTERN, name.c_str(), u"UTC", 3,
                                                        pattern.data(),
                                                        static_cast<std::int32_t>(pattern.size()), &status));
    requireIcu(status, what);
    constexpr double millisecondsADay = 86400000;
    const double moment = static_cast<double>(dayNumber(date)) * millisecondsADay;
    return icuText(what, [&](UChar* buffer, std::int32_t capacity, UErrorCode* error) {
        return udat_format(format.getAlias(), moment, buffer, capacity, nullptr, error);
    });
}

std::size_t firstWeekday(std::string_view locale) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::LocalUCalendarPointer calendar(
        ucal_open(u"UTC", 3, gregorian(locale).c_str(), UCAL_GREGORIAN, &status));
    requireIcu(status, what);
    return static_cast<std::size_t>(ucal_getAttribute(calendar.getAlias(), UCAL_FIRST_DAY_OF_WEEK) -
                                    UCAL_SUNDAY);
}

}  // namespace tapcore

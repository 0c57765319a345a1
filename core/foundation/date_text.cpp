#include "core/foundation/date_text.h"

#include <unicode/ucal.h>
#include <unicode/udat.h>
#include <unicode/udateintervalformat.h>
#include <unicode/udatpg.h>

#include <array>
#include <string>
#include <string_view>
#include <utility>

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
    if (U_FAILURE(status) || status == U_STRING_NOT_TERMINATED_WARNING || !isKnownLocale(name.data()))
        return "en";
    return name.data();
}

std::u16string patternOf(const std::string& locale, std::u16string_view fields) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::LocalUDateTimePatternGeneratorPointer patterns(udatpg_open(locale.c_str(), &status));
    std::array<char16_t, 64> pattern{};
    const std::int32_t size =
        udatpg_getBestPattern(patterns.getAlias(), fields.data(), static_cast<std::int32_t>(fields.size()),
                              pattern.data(), pattern.size(), &status);
    requireIcu(status, what);
    return {pattern.data(), static_cast<std::size_t>(size)};
}

double momentOf(const CivilDate& date) {
    constexpr double millisecondsADay = 86400000;
    return static_cast<double>(dayNumber(date)) * millisecondsADay;
}

/// Narrow blanks, which many fonts and terminals lack, as ordinary ones.
std::string withPlainBlanks(std::string text) {
    for (const std::string_view blank : {"\u2009", "\u202F", "\u00A0"})
        for (auto at = text.find(blank); at != std::string::npos; at = text.find(blank))
            text.replace(at, blank.size(), " ");
    return text;
}

std::u16string_view fieldsOf(DateWriter::Form form) {
    switch (form) {
        case DateWriter::Form::full:
            return u"yMMMMEEEEd";
        case DateWriter::Form::month:
            return u"yMMMM";
        default:
            return u"yMMMd";
    }
}

}  // namespace

struct DateWriter::Format {
    icu::LocalUDateFormatPointer format;
    bool keepsBlanks;
};

DateWriter::DateWriter(Form form, std::string_view locale) {
    const std::string name = gregorian(locale);
    const std::u16string pattern = patternOf(name, fieldsOf(form));
    UErrorCode status = U_ZERO_ERROR;
    UDateFormat* const opened = udat_open(UDAT_PATTERN, UDAT_PATTERN, name.c_str(), u"UTC", 3, pattern.data(),
                                          static_cast<std::int32_t>(pattern.size()), &status);
    format_ =
        std::make_shared<const Format>(Format{icu::LocalUDateFormatPointer(opened), form == Form::usual});
    requireIcu(status, what);
}

std::string DateWriter::operator()(const CivilDate& date) const {
    std::string text = icuText(what, [&](UChar* buffer, std::int32_t capacity, UErrorCode* error) {
        return udat_format(format_->format.getAlias(), momentOf(date), buffer, capacity, nullptr, error);
    });
    return format_->keepsBlanks ? text : withPlainBlanks(std::move(text));
}

std::string dateText(const CivilDate& date, std::string_view locale) {
    return DateWriter(DateWriter::Form::usual, locale)(date);
}

std::string dateRangeText(const CivilDate& first, const CivilDate& last, std::string_view locale) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::LocalUDateIntervalFormatPointer format(
        udtitvfmt_open(gregorian(locale).c_str(), u"yMMMMd", 6, u"UTC", 3, &status));
    requireIcu(status, what);
    return withPlainBlanks(icuText(what, [&](UChar* buffer, std::int32_t capacity, UErrorCode* error) {
        return udtitvfmt_format(format.getAlias(), momentOf(first), momentOf(last), buffer, capacity, nullptr,
                                error);
    }));
}

bool usesTwelveHours(std::string_view locale) {
    const std::string_view name = locale.substr(0, locale.find_first_of(".@"));
    if (name.empty() || name == "C" || name == "POSIX") return false;
    bool isQuoted = false;  // as 'Uhr' is
    for (const char16_t c : patternOf(gregorian(name), u"j")) {
        if (c == u'\'') isQuoted = !isQuoted;
        if (!isQuoted && (c == u'h' || c == u'K')) return true;
    }
    return false;
}

std::string hourText(std::size_t hour, bool twelveHours) {
    if (!twelveHours) return std::to_string(hour);
    return std::to_string((hour + 11) % 12 + 1) + (hour < 12 ? " AM" : " PM");
}

std::string localHourText(std::size_t hour, std::string_view locale) {
    return hourText(hour, locale.find("hours=h12") != locale.npos);
}

std::size_t firstWeekday(std::string_view locale) {
    constexpr std::array<std::string_view, 7> days = {"sun", "mon", "tue", "wed", "thu", "fri", "sat"};
    for (std::size_t day = 0; day < days.size(); ++day)
        if (locale.find(std::string("fw=").append(days[day])) != locale.npos) return day;
    UErrorCode status = U_ZERO_ERROR;
    const icu::LocalUCalendarPointer calendar(
        ucal_open(u"UTC", 3, gregorian(locale).c_str(), UCAL_GREGORIAN, &status));
    requireIcu(status, what);
    return static_cast<std::size_t>(ucal_getAttribute(calendar.getAlias(), UCAL_FIRST_DAY_OF_WEEK) -
                                    UCAL_SUNDAY);
}

}  // namespace tapcore

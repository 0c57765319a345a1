#include "core/foundation/weekday_names.h"

#include <unicode/udat.h>

#include <cstdint>

#include "core/foundation/icu.h"
#include "core/foundation/owned.h"

namespace tapcore {
namespace {

using Format = Owned<UDateFormat, udat_close>;

constexpr std::string_view what = "the names of weekdays failed";

/// A format that knows the locale's symbols of the Gregorian calendar, whichever its usual one is.
Format openFormat(std::string_view locale) {
    UErrorCode status = U_ZERO_ERROR;
    char name[ULOC_FULLNAME_CAPACITY];
    uloc_canonicalize(std::string(locale).c_str(), name, sizeof name, &status);
    uloc_setKeywordValue("calendar", "gregorian", name, sizeof name, &status);
    if (U_FAILURE(status) || status == U_STRING_NOT_TERMINATED_WARNING || !isKnownLocale(name))
        return openFormat("en");
    Format format(udat_open(UDAT_PATTERN, UDAT_PATTERN, name, u"UTC", 3, u"ccc", 3, &status));
    requireIcu(status, what);
    return format;
}

std::string nameIn(const UDateFormat* format, std::int32_t day) {
    return icuText(what, [&](UChar* buffer, std::int32_t capacity, UErrorCode* status) {
        return udat_getSymbols(format, UDAT_STANDALONE_SHORT_WEEKDAYS, day, buffer, capacity, status);
    });
}

}  // namespace

std::array<std::string, 7> weekdayNames(std::string_view locale) {
    const Format format = openFormat(locale);
    std::array<std::string, 7> names;
    for (std::size_t day = 0; day < names.size(); ++day)
        names[day] = nameIn(format.get(), static_cast<std::int32_t>(day) + UCAL_SUNDAY);
    return names;
}

}  // namespace tapcore

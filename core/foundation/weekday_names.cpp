#include "core/foundation/weekday_names.h"

#include <unicode/udat.h>
#include <unicode/ustring.h>

#include <cstdint>
#include <memory>

#include "core/foundation/fatal.h"

namespace tapcore {
namespace {

struct Close {
    void operator()(UDateFormat* format) const { udat_close(format); }
};
using Format = std::unique_ptr<UDateFormat, Close>;

void require(UErrorCode status) {
    if (U_FAILURE(status)) fatal(std::string("the names of weekdays failed: ") + u_errorName(status));
}

/// A format that knows the locale's symbols of the Gregorian calendar, whichever its usual one is.
Format openFormat(std::string_view locale) {
    UErrorCode status = U_ZERO_ERROR;
    char name[ULOC_FULLNAME_CAPACITY];
    uloc_canonicalize(std::string(locale).c_str(), name, sizeof name, &status);
    uloc_setKeywordValue("calendar", "gregorian", name, sizeof name, &status);
    if (U_FAILURE(status) || status == U_STRING_NOT_TERMINATED_WARNING) return openFormat("en");
    Format format(udat_open(UDAT_PATTERN, UDAT_PATTERN, name, u"UTC", 3, u"ccc", 3, &status));
    require(status);
    return format;
}

std::string nameIn(const UDateFormat* format, std::int32_t day) {
    UChar name[128];
    char text[3 * 128];
    UErrorCode status = U_ZERO_ERROR;
    const auto size = udat_getSymbols(format, UDAT_STANDALONE_SHORT_WEEKDAYS, day, name, 128, &status);
    std::int32_t length = 0;
    require(status);
    u_strToUTF8(text, sizeof text, &length, name, size, &status);
    require(status);
    return {text, static_cast<std::size_t>(length)};
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

// Calendars of named zones, which ICU knows.

#include <unicode/ucal.h>

#include <stdexcept>
#include <string>

#include "core/foundation/calendar.h"
#include "core/foundation/icu.h"
#include "core/foundation/owned.h"

namespace tapcore {
namespace {

constexpr std::string_view what = "the calendar failed";

/// ICU takes any name for a zone and calls those it does not know this.
constexpr std::u16string_view unknownZone = u"Etc/Unknown";

bool isKnownZone(const std::u16string& zone) {
    if (zone.empty()) return false;
    UChar canonical[128];
    UErrorCode status = U_ZERO_ERROR;
    UBool isSystem = false;
    ucal_getCanonicalTimeZoneID(zone.data(), static_cast<std::int32_t>(zone.size()), canonical, 128,
                                &isSystem, &status);
    return U_SUCCESS(status) && zone != unknownZone;
}

std::chrono::milliseconds field(const UCalendar& calendar, UCalendarDateFields name) {
    UErrorCode status = U_ZERO_ERROR;
    const std::chrono::milliseconds value(ucal_get(&calendar, name, &status));
    requireIcu(status, what);
    return value;
}

/// A zone's clocks. Copies are independent, so that two threads may have one each.
class Clock {
  public:
    explicit Clock(UCalendar* opened) : calendar_(opened) {}
    Clock(const Clock& other) {
        UErrorCode status = U_ZERO_ERROR;
        calendar_.reset(ucal_clone(other.calendar_.get(), &status));
        requireIcu(status, what);
    }
    Clock(Clock&&) noexcept = default;

    std::chrono::seconds operator()(Instant moment) const {
        UErrorCode status = U_ZERO_ERROR;
        ucal_setMillis(calendar_.get(), static_cast<UDate>(moment.time_since_epoch().count()), &status);
        requireIcu(status, what);
        return std::chrono::floor<std::chrono::seconds>(field(*calendar_, UCAL_ZONE_OFFSET) +
                                                        field(*calendar_, UCAL_DST_OFFSET));
    }

  private:
    Owned<UCalendar, ucal_close> calendar_;
};

Calendar::Offset namedZone(std::string_view name) {
    const std::u16string zone = utf16(name);
    if (!isKnownZone(zone)) throw std::invalid_argument("unknown time zone: " + std::string(name));
    UErrorCode status = U_ZERO_ERROR;
    Clock clock(ucal_open(zone.data(), static_cast<std::int32_t>(zone.size()), "en_US_POSIX", UCAL_GREGORIAN,
                          &status));
    requireIcu(status, what);
    return clock;
}

}  // namespace

Calendar::Calendar(std::string_view zone) : Calendar(namedZone(zone)) {}

}  // namespace tapcore

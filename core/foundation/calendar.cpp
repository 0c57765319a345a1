#include "core/foundation/calendar.h"

#include <unicode/ucal.h>
#include <unicode/ustring.h>

#include <limits>
#include <stdexcept>
#include <utility>

#include "core/foundation/fatal.h"

namespace tapcore {
namespace {

void require(UErrorCode status) {
    if (U_FAILURE(status)) fatal(std::string("the calendar failed: ") + u_errorName(status));
}

std::u16string utf16(std::string_view text) {
    std::u16string result(text.size(), u'\0');
    std::int32_t size = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strFromUTF8(result.data(), static_cast<std::int32_t>(result.size()), &size, text.data(),
                  static_cast<std::int32_t>(text.size()), &status);
    result.resize(U_FAILURE(status) ? 0 : static_cast<std::size_t>(size));
    return result;
}

std::string utf8(const UChar* text, std::int32_t size) {
    std::string result(static_cast<std::size_t>(size) * 3, '\0');
    std::int32_t length = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strToUTF8(result.data(), static_cast<std::int32_t>(result.size()), &length, text, size, &status);
    require(status);
    result.resize(static_cast<std::size_t>(length));
    return result;
}

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

std::int32_t field(std::int64_t value) {
    if (value < std::numeric_limits<std::int32_t>::min() || value > std::numeric_limits<std::int32_t>::max())
        fatal("a date is out of the calendar's range");
    return static_cast<std::int32_t>(value);
}

}  // namespace

struct Calendar::Implementation {
    UCalendar* calendar;

    explicit Implementation(UCalendar* opened) : calendar(opened) {}
    Implementation(const Implementation&) = delete;
    Implementation& operator=(const Implementation&) = delete;
    ~Implementation() { ucal_close(calendar); }

    void set(Instant moment) {
        UErrorCode status = U_ZERO_ERROR;
        ucal_setMillis(calendar, static_cast<UDate>(moment.time_since_epoch().count()), &status);
        require(status);
    }

    std::int64_t get(UCalendarDateFields of) const {
        UErrorCode status = U_ZERO_ERROR;
        const auto value = ucal_get(calendar, of, &status);
        require(status);
        return value;
    }
};

Calendar::Calendar(std::string_view zone) {
    const std::u16string name = utf16(zone);
    if (!isKnownZone(name)) throw std::invalid_argument("unknown time zone: " + std::string(zone));
    UErrorCode status = U_ZERO_ERROR;
    UCalendar* opened = ucal_open(name.data(), static_cast<std::int32_t>(name.size()), "en_US_POSIX",
                                  UCAL_GREGORIAN, &status);
    require(status);
    implementation_ = std::make_unique<Implementation>(opened);
    // Gregorian rules throughout, also before 1582.
    ucal_setGregorianChange(opened, -std::numeric_limits<double>::infinity(), &status);
}

Calendar::Calendar(const Calendar& other) {
    UErrorCode status = U_ZERO_ERROR;
    implementation_ = std::make_unique<Implementation>(ucal_clone(other.implementation_->calendar, &status));
    require(status);
}

Calendar::Calendar(Calendar&&) noexcept = default;

Calendar& Calendar::operator=(Calendar other) noexcept {
    std::swap(implementation_, other.implementation_);
    return *this;
}

Calendar::~Calendar() = default;

std::string Calendar::hostZone() {
    UChar name[128];
    UErrorCode status = U_ZERO_ERROR;
    const auto size = ucal_getHostTimeZone(name, 128, &status);
    require(status);
    return utf8(name, size);
}

LocalTime Calendar::local(Instant moment) const {
    implementation_->set(moment);
    return {implementation_->get(UCAL_EXTENDED_YEAR), implementation_->get(UCAL_MONTH) + 1,
            implementation_->get(UCAL_DAY_OF_MONTH),  implementation_->get(UCAL_HOUR_OF_DAY),
            implementation_->get(UCAL_MINUTE),        implementation_->get(UCAL_SECOND)};
}

std::size_t Calendar::weekday(Instant moment) const {
    implementation_->set(moment);
    return static_cast<std::size_t>(implementation_->get(UCAL_DAY_OF_WEEK) - UCAL_SUNDAY);
}

Instant Calendar::moment(const LocalTime& time) const {
    UCalendar* calendar = implementation_->calendar;
    UErrorCode status = U_ZERO_ERROR;
    ucal_clear(calendar);
    ucal_setAttribute(calendar, UCAL_REPEATED_WALL_TIME, UCAL_WALLTIME_FIRST);
    ucal_set(calendar, UCAL_EXTENDED_YEAR, field(time.year));
    ucal_set(calendar, UCAL_MONTH, field(time.month - 1));
    ucal_set(calendar, UCAL_DAY_OF_MONTH, field(time.day));
    ucal_set(calendar, UCAL_HOUR_OF_DAY, field(time.hour));
    ucal_set(calendar, UCAL_MINUTE, field(time.minute));
    ucal_set(calendar, UCAL_SECOND, field(time.second));
    const UDate millis = ucal_getMillis(calendar, &status);
    require(status);
    return Instant(std::chrono::milliseconds(static_cast<std::int64_t>(millis)));
}

}  // namespace tapcore

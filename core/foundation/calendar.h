#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace tapcore {

/// A moment, in milliseconds since 1970-01-01T00:00Z.
using Instant = std::chrono::sys_time<std::chrono::milliseconds>;

/// A local date and time as a clock on the wall shows it: month 1 to 12, day from 1, hour 0 to 23.
struct LocalTime {
    std::int64_t year = 1970;
    std::int64_t month = 1;
    std::int64_t day = 1;
    std::int64_t hour = 0;
    std::int64_t minute = 0;
    std::int64_t second = 0;

    bool operator==(const LocalTime&) const = default;
};

/// The Gregorian calendar in one time zone; it alone knows where days and hours begin.
/// Copies are independent; one calendar serves one thread at a time.
class Calendar {
  public:
    /// `zone` is an IANA name ("Europe/Berlin") or "UTC". Throws std::invalid_argument naming an unknown one.
    explicit Calendar(std::string_view zone);
    Calendar(const Calendar& other);
    Calendar(Calendar&&) noexcept;
    Calendar& operator=(Calendar other) noexcept;
    ~Calendar();

    /// The name of the zone the machine is set to (its TZ, else its own setting).
    static std::string hostZone();

    /// What clocks in this zone show at a moment.
    LocalTime local(Instant moment) const;

    /// The moment at which clocks in this zone show `time`. Fields past their range roll over (31 February is
    /// 3 March); of a time that comes twice the first, and one that is skipped lies as far behind the gap's
    /// start.
    Instant moment(const LocalTime& time) const;

    /// The day of the week of a moment, from 0 for Sunday.
    std::size_t weekday(Instant moment) const;

  private:
    struct Implementation;
    std::unique_ptr<Implementation> implementation_;
};

}  // namespace tapcore

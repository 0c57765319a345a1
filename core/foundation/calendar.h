#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
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
/// One calendar serves one thread at a time.
class Calendar {
  public:
    /// How far the clocks of a zone are ahead of UTC at a moment: less than 26 hours, in either direction.
    using Offset = std::function<std::chrono::seconds(Instant moment)>;

    /// The zone whose clocks are ahead by this.
    explicit Calendar(Offset offset);
    /// `zone` is an IANA name ("Europe/Berlin") or "UTC". Throws std::invalid_argument naming an unknown one.
    explicit Calendar(std::string_view zone);

    /// What clocks in this zone show at a moment.
    LocalTime local(Instant moment) const;

    /// The moment at which clocks in this zone show `time`. Fields past their range roll over (31 February is
    /// 3 March); a time that comes twice is the first of the two, and one that is skipped is as far behind
    /// the gap's start.
    Instant moment(const LocalTime& time) const;

  private:
    Offset offset_;
};

}  // namespace tapcore

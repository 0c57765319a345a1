#include "app/common/control/pause_time.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <chrono>

#include "app/common/control/protocol.h"
#include "app/common/program.h"
#include "core/foundation/integers.h"

namespace tappora {
namespace {

using tapcore::Instant;
using tapcore::LocalTime;

/// A number without a sign, of at most so many digits; nothing for another text.
std::optional<std::int64_t> parseNumber(std::string_view text, std::size_t digits) {
    if (text.empty() || text.size() > digits ||
        text.find_first_not_of("0123456789") != std::string_view::npos)
        return std::nullopt;
    return tapcore::parseInteger(text);
}

/// "30m" or "2h".
std::optional<std::chrono::minutes> parseSpan(std::string_view text) {
    if (!text.ends_with('m') && !text.ends_with('h')) return std::nullopt;
    const auto number = parseNumber(text.substr(0, text.size() - 1), 9);
    if (!number || *number == 0) return std::nullopt;
    return text.ends_with('h') ? std::chrono::hours(*number) : std::chrono::minutes(*number);
}

struct ClockTime {
    std::int64_t hour;
    std::int64_t minute;
};

/// "14:00" or "9:30".
std::optional<ClockTime> parseClock(std::string_view text) {
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos || text.size() - colon != 3) return std::nullopt;
    const auto hour = parseNumber(text.substr(0, colon), 2);
    const auto minute = parseNumber(text.substr(colon + 1), 2);
    if (!hour || !minute || *hour > 23 || *minute > 59) return std::nullopt;
    return ClockTime{*hour, *minute};
}

/// The next moment after `now` at which clocks show that; nothing when they skip it then.
std::optional<Instant> nextTime(ClockTime clock, Instant now, const tapcore::Calendar& calendar) {
    LocalTime time = calendar.local(now);
    time = {time.year, time.month, time.day, clock.hour, clock.minute, 0};
    Instant moment = calendar.moment(time);
    if (moment <= now) {
        const LocalTime tomorrow{time.year, time.month, time.day + 1, clock.hour, clock.minute, 0};
        moment = calendar.moment(tomorrow);
    }
    const LocalTime shown = calendar.local(moment);
    return shown.hour == clock.hour && shown.minute == clock.minute ? std::optional(moment) : std::nullopt;
}

UsageError notATime(const std::vector<std::string>& words) {
    return UsageError(fmt::format("not a time: {}; use 30m, 2h or until 14:00", fmt::join(words, " ")));
}

Instant endOf(const std::vector<std::string>& words, Instant now, const tapcore::Calendar& calendar) {
    if (words.size() == 1) {
        const auto span = parseSpan(words.front());
        if (!span) throw notATime(words);
        return std::chrono::ceil<std::chrono::seconds>(now + *span);
    }
    const auto clock =
        words.size() == 2 && words.front() == "until" ? parseClock(words.back()) : std::nullopt;
    if (!clock) throw notATime(words);
    const auto moment = nextTime(*clock, now, calendar);
    if (!moment) throw UsageError(fmt::format("no such time: clocks skip {} on that day", words.back()));
    return *moment;
}

}  // namespace

std::string objectionTo(Instant end, Instant now) {
    if (end <= now) return "a pause ends later than now";
    if (end > std::chrono::ceil<std::chrono::seconds>(now) + longestPause)
        return fmt::format("a pause is {} days at most; without a time it lasts until tappora resume",
                           longestPause.count());
    return "";
}

std::optional<Instant> pauseEnd(const std::vector<std::string>& words, Instant now,
                                const tapcore::Calendar& calendar) {
    if (words.empty()) return std::nullopt;
    const Instant end = endOf(words, now, calendar);
    if (const std::string why = objectionTo(end, now); !why.empty())
        throw UsageError(fmt::format("{}: {}", fmt::join(words, " "), why));
    return end;
}

}  // namespace tappora

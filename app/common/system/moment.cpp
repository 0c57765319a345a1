#include "app/common/system/moment.h"

#include <fmt/format.h>

#include "core/counting/day.h"
#include "core/foundation/integers.h"

namespace tappora {
namespace {

constexpr std::string_view pattern = "YYYY-MM-DDTHH:MM:SS";

bool hasMarks(std::string_view text) {
    return text.size() == pattern.size() && text[10] == 'T' && text[13] == ':' && text[16] == ':';
}

}  // namespace

std::optional<tapcore::Instant> momentOf(std::string_view text, const tapcore::Calendar& calendar) {
    if (!hasMarks(text)) return std::nullopt;
    const auto day = tapcore::Day::parse(text.substr(0, 10));
    const auto hour = tapcore::parseInteger(text.substr(11, 2));
    const auto minute = tapcore::parseInteger(text.substr(14, 2));
    const auto second = tapcore::parseInteger(text.substr(17, 2));
    if (!day || !hour || !minute || !second) return std::nullopt;
    const tapcore::LocalTime time{day->year, day->month, day->day, *hour, *minute, *second};
    const tapcore::Instant moment = calendar.moment(time);
    if (calendar.local(moment) != time) return std::nullopt;
    return moment;
}

std::string utcText(tapcore::Instant moment) {
    const tapcore::Calendar utc("UTC");
    const tapcore::LocalTime time = utc.local(moment);
    return fmt::format("{}T{:02}:{:02}:{:02}Z", tapcore::Day(moment, utc).description(), time.hour,
                       time.minute, time.second);
}

std::optional<tapcore::Instant> utcMoment(std::string_view text) {
    if (!text.ends_with('Z')) return std::nullopt;
    return momentOf(text.substr(0, text.size() - 1), tapcore::Calendar("UTC"));
}

std::string clockText(tapcore::Instant moment, tapcore::Instant now, const tapcore::Calendar& calendar) {
    const tapcore::LocalTime time = calendar.local(moment);
    const std::string clock = fmt::format("{:02}:{:02}", time.hour, time.minute);
    const tapcore::Day day(moment, calendar);
    return day == tapcore::Day(now, calendar) ? clock : day.description() + " " + clock;
}

}  // namespace tappora

#include "app/recorder/local_time.h"

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

}  // namespace tappora

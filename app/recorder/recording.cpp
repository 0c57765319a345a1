#include "app/recorder/recording.h"

#include <linux/input-event-codes.h>

#include <algorithm>
#include <limits>

namespace tappora {

std::optional<std::int64_t> recordedTime(std::uint64_t seconds, std::uint64_t microseconds) {
    constexpr std::uint64_t perSecond = 1'000'000;
    constexpr std::int64_t most = 10'000'000'000'000'000;
    if (microseconds >= perSecond || seconds > std::numeric_limits<std::uint64_t>::max() / perSecond)
        return std::nullopt;
    const auto time = static_cast<std::int64_t>(seconds * perSecond + microseconds);
    if (time < -most || time > most) return std::nullopt;
    return time;
}

bool lacksEvents(const Recording& recording) {
    return std::any_of(recording.events.begin(), recording.events.end(), [](const RecordedEvent& event) {
        return event.type == EV_SYN && event.code == SYN_DROPPED;
    });
}

}  // namespace tappora

#include "app/recorder/replay.h"

#include <linux/input-event-codes.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <string_view>
#include <vector>

#include "app/recorder/evdev_frames.h"
#include "app/recorder/key_codes.h"

namespace tappora {

void replay(const Recording& recording, tapcore::Instant starting, CountingClock& clock, EventRules& rules) {
    if (recording.events.empty()) return;
    for (DeviceId id = 0; id < recording.devices.size(); ++id) rules.plug(id, recording.devices[id]);
    std::vector<EvdevFrames> frames(recording.devices.size());
    DeviceId device = 0;
    const EvdevFrames::Emit count = [&](const InputEvent& event) { rules.take(device, event); };
    for (const RecordedEvent& event : recording.events) {
        const std::chrono::microseconds since(event.time - recording.events.front().time);
        clock.advance(starting + std::chrono::floor<std::chrono::milliseconds>(since));
        device = event.device;
        frames[device].take(event, count);
    }
    for (device = 0; device < frames.size(); ++device) frames[device].finish(count);
}

bool maybeMasked(const Recording& recording) {
    constexpr std::int64_t many = 10;
    constexpr std::size_t nameSize = std::string_view("KEY_A").size();  // that of letters and digits alone
    std::array<std::int64_t, KEY_CNT> presses{};
    for (const RecordedEvent& event : recording.events)
        if (event.type == EV_KEY && event.value == 1 && event.code < presses.size()) ++presses[event.code];
    std::int64_t all = 0;
    for (std::size_t code = 0; code < presses.size(); ++code)
        if (presses[code] > 0 && linuxKeyName(static_cast<LinuxKey>(code)).value_or("").size() == nameSize)
            all += presses[code];
    return all >= many && all == presses[KEY_A];
}

}  // namespace tappora

#include "app/recorder/recording_file.h"

#include <optional>

#include "app/recorder/text_walkers.h"

namespace tappora {
namespace {

constexpr std::string_view eventMark = "E:";

/// Whether a text begins as an event's time does: " 12.".
bool beginsTime(std::string_view text) {
    FieldWalker fields(text);
    std::uint64_t seconds = 0;
    return fields.take(' ') && fields.take(seconds) && fields.take('.');
}

/// Where the event begins on a line, after its mark: at its start, or behind what was typed into the
/// terminal.
std::optional<std::string_view> eventIn(std::string_view line) {
    if (line.starts_with(eventMark)) return line.substr(eventMark.size());
    const std::size_t at = line.find(eventMark);
    if (at == std::string_view::npos || line.starts_with('#')) return std::nullopt;
    const std::string_view after = line.substr(at + eventMark.size());
    return beginsTime(after) ? std::optional(after) : std::nullopt;
}

/// "12.000345"
bool takeTime(FieldWalker& fields, std::int64_t& time) {
    std::uint64_t seconds = 0;
    std::uint32_t fraction = 0;
    fields.skipBlanks();
    if (!fields.take(seconds) || !fields.take('.')) return false;
    const std::size_t before = fields.rest().size();
    if (!fields.take(fraction) || before - fields.rest().size() != 6) return false;
    const auto taken = recordedTime(seconds, fraction);
    time = taken.value_or(0);
    return taken.has_value();
}

bool takeField(FieldWalker& fields, auto& value, int base) {
    const std::size_t before = fields.rest().size();
    fields.skipBlanks();
    return fields.rest().size() < before && fields.take(value, base);
}

bool readEvent(std::string_view text, RecordedEvent& event) {
    FieldWalker fields(text);
    if (!takeTime(fields, event.time) || !takeField(fields, event.type, 16) ||
        !takeField(fields, event.code, 16) || !takeField(fields, event.value, 10))
        return false;
    fields.skipBlanks();
    return fields.rest().empty() || fields.rest().front() == '#';
}

/// "I: 0003 046d c31c 0110": bus, vendor, product, version.
void readIds(std::string_view line, InputDevice& device) {
    FieldWalker fields(line.substr(2));
    InputDevice read = device;
    if (!takeField(fields, read.bus, 16) || !takeField(fields, read.vendor, 16) ||
        !takeField(fields, read.product, 16))
        return;
    device = read;
    device.isVirtual = isVirtualInRecording(device);
}

}  // namespace

Recording readEvemu(std::string_view text) {
    Recording recording;
    for (LineWalker lines(text); lines.next();) {
        const std::string_view line = lines.line();
        if (line.starts_with("N: ")) recording.devices.push_back({.name = std::string(line.substr(3))});
        if (line.starts_with("I: ") && !recording.devices.empty()) readIds(line, recording.devices.back());
        const auto found = eventIn(line);
        if (!found) continue;
        if (recording.devices.empty()) recording.devices.push_back({.name = "a device without a name"});
        RecordedEvent event{.device = static_cast<DeviceId>(recording.devices.size() - 1)};
        if (!readEvent(*found, event)) throw RecordingError(lines.number(), "damaged event line");
        recording.events.push_back(event);
    }
    return recording;
}

}  // namespace tappora

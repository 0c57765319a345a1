#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "app/recorder/input_device.h"
#include "core/foundation/text_error.h"

namespace tappora {

/// One event as the kernel gives it: type, code and value as in linux/input-event-codes.h.
struct RecordedEvent {
    std::int64_t time = 0;  ///< in microseconds; only differences mean something
    DeviceId device = 0;    ///< a place in the recording's list of devices
    std::uint16_t type = 0;
    std::uint16_t code = 0;
    std::int32_t value = 0;

    bool operator==(const RecordedEvent&) const = default;
};

/// What devices did for a while, recorded to a file.
struct Recording {
    std::vector<InputDevice> devices;
    std::vector<RecordedEvent> events;  ///< of all devices, in order of time
    /// The recording program wrote most keys as KEY_A, so that nobody can read what was typed.
    bool keysAreMasked = false;

    bool operator==(const Recording&) const = default;
};

/// A line of a recording that cannot be read. The rest of it would be counted wrong, so none of it is.
class RecordingError : public std::runtime_error {
  public:
    RecordingError(std::size_t line, std::string_view why)
        : std::runtime_error(tapcore::withVisibleNuls(why)), line_(line) {}

    std::size_t line() const { return line_; }  ///< from 1

  private:
    std::size_t line_;
};

/// A time of so many seconds and microseconds, before 0 as numbers that wrapped around 64 bits; nothing for
/// one more than three hundred years from 0, or no time at all.
std::optional<std::int64_t> recordedTime(std::uint64_t seconds, std::uint64_t microseconds);

/// Whether the kernel dropped events while this was recorded.
bool lacksEvents(const Recording& recording);

}  // namespace tappora

#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "app/recorder/input_device.h"
#include "app/recorder/input_event.h"
#include "app/recorder/key_codes.h"

namespace tappora {

/// Who is told what the input devices do.
class EventListener {
  public:
    virtual ~EventListener() = default;

    /// A device's events follow, until it is unplugged.
    virtual void plugged(DeviceId id, const InputDevice& device) = 0;
    virtual void unplugged(DeviceId id) = 0;
    /// A device is there whose events cannot be read.
    virtual void unreadable(const InputDevice& device, std::error_code why) = 0;
    /// An event, and how long ago it was made: one may wait to be read.
    virtual void happened(DeviceId id, const InputEvent& event, std::chrono::milliseconds ago) = 0;
    /// The kernel dropped events of a device, since they were not read in time.
    virtual void dropped() = 0;
};

/// The input devices of a seat, those to come included.
class EventSource {
  public:
    virtual ~EventSource() = default;

    /// Readable when there is something to dispatch.
    virtual int descriptor() const = 0;
    /// Tells the listener what happened since the last time; does not wait for more. At the first time, all
    /// devices that are there are plugged, or unreadable.
    virtual void dispatch(EventListener& listener) = 0;
    /// The modifier keys that a device holds at this moment, also when another program keeps its events to
    /// itself; nothing when the device does not say.
    virtual std::optional<std::vector<LinuxKey>> heldModifiers(DeviceId id) const = 0;
};

struct SourceOptions {
    std::string seat = "seat0";
    std::vector<std::string> ignored{};  ///< names of devices to leave alone
    bool tapsClick = false;              ///< taps on touchpads are clicks
};

/// Listens to the devices through libinput and udev, on any display server and on the console. Devices are
/// opened for reading only. Failure when that cannot be had, or this build has no libinput.
std::unique_ptr<EventSource> openInputDevices(const SourceOptions& options);

}  // namespace tappora

#pragma once

#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

namespace tappora {

/// By what a device and its copy are alike: name, bus, vendor and product.
using DeviceIdentity = std::tuple<std::string, std::uint16_t, std::uint16_t, std::uint16_t>;

/// A device that events come from.
struct InputDevice {
    std::string name;    ///< as its driver calls it
    std::string node{};  ///< "/dev/input/event3"; "" when a recording does not say
    std::uint16_t bus = 0;
    std::uint16_t vendor = 0;
    std::uint16_t product = 0;
    bool isVirtual = false;   ///< a program made it: there is no hardware
    bool isKeyboard = false;  ///< has the keys of one, not only a few

    /// "NAME (NODE)".
    std::string description() const;
    DeviceIdentity identity() const { return {name, bus, vendor, product}; }

    bool operator==(const InputDevice&) const = default;
};

/// A device within a source; given again only once the first is gone.
using DeviceId = std::uint32_t;

/// Whether a virtual device is a key remapper's: of those known by name, or with one of `names` in its own,
/// upper or lower case alike. Such a device is what the user really types on: the remapper holds the
/// hardware's events back.
bool isRemapper(const InputDevice& device, const std::vector<std::string>& names);

/// Whether a device of a recording is one that a program made. A recording does not say where in the system a
/// device is; those of bus type 6 are virtual, but for the keyboards and mice that a virtual machine is
/// given.
bool isVirtualInRecording(const InputDevice& device);

}  // namespace tappora

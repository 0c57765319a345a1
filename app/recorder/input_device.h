#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tappora {

/// A device that events come from.
struct InputDevice {
    std::string name;    ///< as its driver calls it
    std::string node{};  ///< "/dev/input/event3"; "" when a recording does not say
    std::uint16_t bus = 0;
    std::uint16_t vendor = 0;
    std::uint16_t product = 0;
    bool isVirtual = false;   ///< a program made it: it stands for no hardware
    bool isKeyboard = false;  ///< has the keys of one, not only a few

    /// "NAME (NODE)".
    std::string description() const;

    bool operator==(const InputDevice&) const = default;
};

/// A device within a source; given again only once the first is gone.
using DeviceId = std::uint32_t;

/// Whether a virtual device is a key remapper's: of those known by name, or with one of `names` in its own,
/// upper or lower case alike. Such a device is what the user really types on: the remapper holds the
/// hardware's events back.
bool isRemapper(const InputDevice& device, const std::vector<std::string>& names);

/// Whether a virtual device is a copy of a real one, as interception tools make them: of its name and ids.
bool isCopy(const InputDevice& device, const InputDevice& real);

}  // namespace tappora

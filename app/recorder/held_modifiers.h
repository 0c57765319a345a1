#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <vector>

#include "app/recorder/input_device.h"
#include "app/recorder/key_codes.h"
#include "core/counting/modifiers.h"

namespace tappora {

/// Which modifier keys are held, on which devices.
///
/// Some releases are never seen: a remapper that starts keeps a keyboard's events to itself, and a key that
/// was held before the keyboard was listened to may be released without an event. There the device is asked
/// again which keys it holds.
class HeldModifiers {
  public:
    /// The modifier keys that a device holds at this moment; nothing when it does not say.
    using Ask = std::function<std::optional<std::vector<LinuxKey>>(DeviceId id)>;

    /// A modifier key went down, or is still down.
    void press(DeviceId id, LinuxKey key);
    void release(DeviceId id, LinuxKey key);
    void releaseAll(DeviceId id);
    /// A key that was down before its device was listened to.
    void assume(DeviceId id, LinuxKey key);

    /// Forgets what is no longer held: of the keyboard that types now the keys that were not seen going down,
    /// of all others every key.
    void check(DeviceId typing, const Ask& ask);

    tapcore::Modifiers all() const;

  private:
    struct Key {
        LinuxKey code;
        bool wasSeen;  ///< going down
    };

    void add(DeviceId id, Key key);
    /// Releases the device's keys that `isUp` names.
    void releaseIf(DeviceId id, const std::function<bool(const Key& key)>& isUp);

    std::map<DeviceId, std::vector<Key>> byDevice_;  ///< of those that hold any
    std::map<LinuxKey, std::size_t> holders_;        ///< how many devices hold a key; above 0
};

}  // namespace tappora

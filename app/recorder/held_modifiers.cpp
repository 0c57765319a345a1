#include "app/recorder/held_modifiers.h"

#include <algorithm>

namespace tappora {

void HeldModifiers::press(DeviceId id, LinuxKey key) {
    release(id, key);
    add(id, {key, true});
}

void HeldModifiers::assume(DeviceId id, LinuxKey key) { add(id, {key, false}); }

void HeldModifiers::release(DeviceId id, LinuxKey key) {
    releaseIf(id, [key](const Key& held) { return held.code == key; });
}

void HeldModifiers::releaseAll(DeviceId id) {
    releaseIf(id, [](const Key&) { return true; });
}

void HeldModifiers::add(DeviceId id, Key key) {
    byDevice_[id].push_back(key);
    ++holders_[key.code];
}

void HeldModifiers::releaseIf(DeviceId id, const std::function<bool(const Key& key)>& isUp) {
    const auto found = byDevice_.find(id);
    if (found == byDevice_.end()) return;
    std::erase_if(found->second, [&](const Key& key) {
        if (!isUp(key)) return false;
        if (--holders_[key.code] == 0) holders_.erase(key.code);
        return true;
    });
    if (found->second.empty()) byDevice_.erase(found);
}

void HeldModifiers::check(DeviceId typing, const Ask& ask) {
    std::vector<DeviceId> asked;
    for (const auto& [id, keys] : byDevice_)
        if (id != typing ||
            std::any_of(keys.begin(), keys.end(), [](const Key& key) { return !key.wasSeen; }))
            asked.push_back(id);
    for (const DeviceId id : asked)
        if (const auto down = ask(id))
            releaseIf(id, [&](const Key& key) {
                return !(id == typing && key.wasSeen) &&
                       std::find(down->begin(), down->end(), key.code) == down->end();
            });
}

tapcore::Modifiers HeldModifiers::all() const {
    tapcore::Modifiers all;
    for (const auto& [key, holders] : holders_) all.insert(modifierOf(key));
    return all;
}

}  // namespace tappora

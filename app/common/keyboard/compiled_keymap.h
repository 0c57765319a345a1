#pragma once

#include <optional>
#include <set>
#include <string>

#include "app/common/keyboard/xkb_setting.h"
#include "core/counting/key_face.h"
#include "core/counting/tally.h"

namespace tappora {

/// Which codes two places of the board count under, as the recorder has it.
enum class IsoKeys {
    absent,   ///< 50 left of "1"; the key beside the left shift, should there be one, is 10
    present,  ///< 10 left of "1", 50 beside the left shift
};

/// What the keys that type print under a layout of the system.
struct CompiledKeymap {
    std::string name;          ///< for people: "German (no dead keys)"
    tapcore::Legends legends;  ///< of keys that type a character or a dead accent; no others
};

/// The codes of the 47 keys that every board has to type with: four rows, from the key left of "1" to "/".
std::set<tapcore::KeyCode> typingCodes(IsoKeys isoKeys);

/// The keymap that the system's keyboard library makes of a layout; nothing when its data has no such layout,
/// or one that types nothing.
std::optional<CompiledKeymap> compiledKeymap(const XkbLayout& keyboard, IsoKeys isoKeys);

}  // namespace tappora

#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "core/counting/modifiers.h"
#include "core/counting/tally.h"

namespace tappora {

/// A key of a Linux input device: KEY_A and the like in linux/input-event-codes.h.
using LinuxKey = std::uint16_t;

/// Which keys two places of the board give. They are the key left of "1" and, on ISO boards only, the one
/// between the left shift and "Z". Linux calls them KEY_GRAVE and KEY_102ND on every board.
enum class BoardShape {
    ansi,  ///< 50 left of "1"; the extra key, should there be one, is 10
    iso,   ///< as Apple's ISO boards have it: 10 left of "1", 50 beside the shift
};

/// The macOS virtual key code of the same place; nothing for a key that macOS has no code for (below 128).
std::optional<tapcore::KeyCode> macKeyCode(LinuxKey key, BoardShape shape);

/// The modifier that a key sets while it is held; empty for other keys.
tapcore::Modifiers modifierOf(LinuxKey key);

/// Whether a key is one of the modifier keys, Caps Lock among them.
bool isModifierKey(LinuxKey key);

/// Whether a code is that of a mouse button. Keys and buttons share one range of codes; the buttons of game
/// pads and the tools of tablets, in that range too, are neither.
bool isMouseButton(LinuxKey code);

/// The name of a key: "KEY_MICMUTE". Nothing for codes that are no key's, or have no name.
std::optional<std::string> linuxKeyName(LinuxKey code);

}  // namespace tappora

#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/counting/tally.h"

namespace tapcore {

/// A key by the name that boards give it, and what the US layout prints on it.
struct KeyName {
    KeyCode code = 0;
    std::string_view id;       ///< "semicolon", "left-shift"
    std::string_view plain;    ///< what it types on the US layout; empty when it types nothing
    std::string_view shifted;  ///< what it types there with shift

    bool types() const { return !plain.empty(); }
};

/// The key of a code, or null.
const KeyName* keyNamed(KeyCode code);

/// What a legend says of a key that types nothing to be seen, or of a key on the number pad.
struct NamedCodes {
    KeyCode left = 0;   ///< the code, or that of the left one of a pair
    KeyCode right = 0;  ///< that code again, or that of the right one, or of the one on the number pad
};

/// "Esc", "caps lock", "⇧", "Num Lock", "PgUp"; whether letters are large, and spaces, "-" and "_" do not
/// matter.
std::optional<NamedCodes> codesNamed(std::string_view legend);

/// The key that types a character on the US layout without shift ("a" in either case, ";"), or null.
const KeyName* keyTyping(std::string_view plain);

/// The key that types a character on the US layout with shift ("*"), or null.
const KeyName* keyTypingShifted(std::string_view shifted);

/// Whether a legend is one of the Mac's own modifiers, such as "⌘" or "option".
bool isMacModifier(std::string_view legend);

/// A legend as it is compared: in small letters, without markup, spaces, "-" and "_" where more than one
/// character is.
std::string comparable(std::string_view legend);

}  // namespace tapcore

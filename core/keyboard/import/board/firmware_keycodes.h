#pragma once

#include <optional>
#include <string_view>

#include "core/counting/tally.h"

namespace tapcore {

/// The key code that a word of a QMK keymap sends when its key is tapped: "KC_A" is 0, and so are
/// "LSFT_T(KC_A)" and "LT(1, KC_A)". Nothing for what sends no key (layers, transparent keys, macros) or more
/// than one ("S(KC_1)"). "KC_GRV" is 50 and "KC_NUBS" 10, as on boards that are not ISO ones.
std::optional<KeyCode> firmwareKeyCode(std::string_view word);

}  // namespace tapcore

#pragma once

#include <string_view>

#include "core/keyboard/import/board/board_draft.h"
#include "core/keyboard/import/board/keymap.h"

namespace tapcore {

/// Reads QMK's `keymap.json` and `keymap.c`, and the keymaps that VIA (`.json`) and Vial (`.vil`) save.
/// Throws KeymapError.
Keymap readKeymap(std::string_view text);

/// Tells each key of a draft what the keymap says of it. Throws KeymapError when the draft's file does not
/// tell the order of the keymap's words, has another number of keys, or was read with another layout.
void applyKeymap(BoardDraft& draft, const Keymap& keymap);

}  // namespace tapcore

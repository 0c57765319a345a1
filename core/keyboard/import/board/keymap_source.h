#pragma once

#include <string_view>

#include "core/keyboard/import/board/keymap.h"

namespace tapcore {

/// Whether a text is C and not JSON: apart from comments it does not begin with a bracket.
bool isKeymapSource(std::string_view text);

/// Reads QMK's `keymap.c`: of the array `keymaps` the layer 0, as the compiler numbers it: by its number, by
/// a `#define`, by an `enum`, or by its place. Words that the file defines are replaced. Throws KeymapError,
/// also where the file does not tell which layer is 0.
Keymap readKeymapSource(std::string_view text);

}  // namespace tapcore

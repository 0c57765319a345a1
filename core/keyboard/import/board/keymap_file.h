#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "core/foundation/characters.h"
#include "core/keyboard/import/board/board_draft.h"

namespace tapcore {

/// Larger keymap files are refused.
constexpr std::size_t largestKeymap = std::size_t{1} << 20;

/// The base layer of a keymap that firmware or its editors saved: a word for each key ("KC_A", "MO(1)").
struct Keymap {
    /// Which key each word belongs to.
    enum class Order {
        layout,  ///< one row, in the order of a layout of QMK
        flat,    ///< one row, the rows of the switch matrix one after the other
        matrix,  ///< the rows of the switch matrix
    };

    Order order = Order::layout;
    std::vector<std::vector<std::string>> rows = {};
    std::string layout = {};  ///< the name of the layout, where the file tells
};

/// A keymap that cannot be read, or that belongs to another board. `what()` says why.
class KeymapError : public std::runtime_error {
  public:
    explicit KeymapError(std::string_view why) : std::runtime_error(withVisibleNuls(why)) {}
};

/// Reads QMK's `keymap.json` and `keymap.c`, and the keymaps that VIA (`.json`) and Vial (`.vil`) save.
/// Throws KeymapError.
Keymap readKeymap(std::string_view text);

/// Tells each key of a draft what the keymap says of it. Throws KeymapError when the draft's file does not
/// tell the order of the keymap's words, has another number of keys, or was read with another layout.
void applyKeymap(BoardDraft& draft, const Keymap& keymap);

}  // namespace tapcore

#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "core/foundation/text_error.h"

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
class KeymapError : public TextError {
  public:
    using TextError::TextError;
};

}  // namespace tapcore

#pragma once

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tapcore {

/// Takes the first piece off a text: what is before the first separator, or all of it. `rest` goes on behind
/// that separator. A loop while `rest` is not empty sees each piece, except an empty one after the last
/// separator.
constexpr std::string_view takePiece(std::string_view& rest, char separator) {
    const std::string_view piece = rest.substr(0, rest.find(separator));
    rest.remove_prefix(std::min(piece.size() + 1, rest.size()));
    return piece;
}

/// All pieces of a text, an empty one after the last separator too: "a,b," is "a", "b" and "".
std::vector<std::string_view> pieces(std::string_view text, char separator);

/// Items with a separator between each two.
std::string joined(std::span<const std::string> items, std::string_view separator);

/// What replaces each "{name}" of a text, by name.
using TextValues = std::initializer_list<std::pair<std::string_view, std::string_view>>;

/// `text` with each "{name}" of `values` replaced by its value. A value is taken as it is, also one with
/// braces; a name that has no value stays as it is.
std::string filled(std::string_view text, TextValues values);

/// The place of a byte in a text, for a message: "line 3, column 7". Columns count characters.
std::string placeIn(std::string_view text, std::size_t offset);

}  // namespace tapcore

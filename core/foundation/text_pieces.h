#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace tapcore {

/// Takes the first piece off a text: what stands before the first separator, or all of it. `rest` goes on
/// behind that separator. A loop while `rest` is not empty sees each piece, save an empty one after the last
/// separator.
constexpr std::string_view takePiece(std::string_view& rest, char separator) {
    const std::string_view piece = rest.substr(0, rest.find(separator));
    rest.remove_prefix(std::min(piece.size() + 1, rest.size()));
    return piece;
}

/// Where a byte of a text stands, for a message: "line 3, column 7". Columns count characters.
std::string placeIn(std::string_view text, std::size_t offset);

}  // namespace tapcore

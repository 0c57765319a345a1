#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tapcore {

/// The integer that `text` is, whole: an optional sign and ASCII digits, in range. "+5" and "-0" are
/// integers;
/// "", " 5", "5.0", "0x5" and "٣" are not.
std::optional<std::int64_t> parseInteger(std::string_view text);

/// The same, for a macOS virtual key code: 0 to 65535.
std::optional<std::uint16_t> parseKeyCode(std::string_view text);

}  // namespace tapcore

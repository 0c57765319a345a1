#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "core/foundation/ascii.h"

namespace tapcore {

/// The integer that the whole of `text` is: an optional sign and ASCII digits, in range. "+5" and "-0" are
/// integers; "", " 5", "5.0", "0x5" and "٣" are not. Nothing when it is not an integer.
std::optional<std::int64_t> parseInteger(std::string_view text);

/// The macOS virtual key code that the whole of `text` is: an integer from 0 to 65535. Else nothing.
std::optional<std::uint16_t> parseKeyCode(std::string_view text);

// For the rows of long tables: reads an integer, or a key code, as above, into its second parameter. False
// when the text is not one.

inline bool parse(std::string_view text, std::int64_t& value) {
    constexpr std::size_t digitsThatFit = 18;
    std::int64_t digits = text.empty() || text.size() > digitsThatFit ? -1 : 0;
    for (std::size_t at = 0; digits >= 0 && at < text.size(); ++at)
        digits = isDigit(text[at]) ? digits * 10 + (text[at] - '0') : -1;
    value = digits;
    if (digits >= 0) return true;
    const auto any = parseInteger(text);
    if (any) value = *any;
    return any.has_value();
}

inline bool parse(std::string_view text, std::uint16_t& keyCode) {
    std::int64_t value = 0;
    if (!parse(text, value) || value < 0 || value > std::numeric_limits<std::uint16_t>::max()) return false;
    keyCode = static_cast<std::uint16_t>(value);
    return true;
}

/// 1234567 as "1,234,567".
std::string grouped(std::int64_t number);

/// "1 day", "1,204 days".
std::string counted(std::size_t count, std::string_view one, std::string_view many);

}  // namespace tapcore

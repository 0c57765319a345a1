#include "core/foundation/integers.h"

#include <charconv>

namespace tapcore {

std::optional<std::int64_t> parseInteger(std::string_view text) {
    const bool plus = text.starts_with('+');
    if (plus) text.remove_prefix(1);
    if (plus && text.starts_with('-')) return std::nullopt;
    std::int64_t value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end) return std::nullopt;
    return value;
}

std::optional<std::uint16_t> parseKeyCode(std::string_view text) {
    std::uint16_t keyCode = 0;
    return parse(text, keyCode) ? std::optional(keyCode) : std::nullopt;
}

std::string grouped(std::int64_t number) {
    std::string digits = std::to_string(number);
    const std::size_t first = number < 0 ? 1 : 0;
    for (std::size_t at = digits.size(); at > first + 3;) digits.insert(at -= 3, 1, ',');
    return digits;
}

std::string counted(std::size_t count, std::string_view one, std::string_view many) {
    return grouped(static_cast<std::int64_t>(count)).append(" ").append(count == 1 ? one : many);
}

}  // namespace tapcore

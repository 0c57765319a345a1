#include "core/foundation/utf8.h"

#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace tapcore {
namespace {

/// How many bytes at the start of `text` are ASCII, counted in words of eight (so possibly up to seven too
/// few).
std::size_t asciiWords(std::string_view text) {
    std::size_t at = 0;
    for (std::uint64_t word = 0; at + sizeof word <= text.size(); at += sizeof word) {
        std::memcpy(&word, text.data() + at, sizeof word);
        if ((word & 0x8080808080808080) != 0) break;
    }
    return at;
}

}  // namespace

Scalar scalarAt(std::string_view text, std::size_t at) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    auto next = static_cast<std::int64_t>(at);
    UChar32 value = 0;
    U8_NEXT_OR_FFFD(bytes, next, static_cast<std::int64_t>(text.size()), value);
    return {static_cast<char32_t>(value), static_cast<std::size_t>(next) - at};
}

char32_t firstScalar(std::string_view text) { return text.empty() ? U'\uFFFD' : scalarAt(text, 0).value; }

std::string utf8(char32_t scalar) {
    std::array<char, U8_MAX_LENGTH> bytes{};
    std::size_t size = 0;
    UBool isError = false;
    U8_APPEND(reinterpret_cast<std::uint8_t*>(bytes.data()), size, bytes.size(), static_cast<UChar32>(scalar),
              isError);
    return isError ? "\uFFFD" : std::string(bytes.data(), size);
}

bool isAscii(std::string_view text) {
    text.remove_prefix(asciiWords(text));
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::size_t firstInvalidUtf8(std::string_view text) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const auto size = static_cast<std::int64_t>(text.size());
    for (auto at = static_cast<std::int64_t>(asciiWords(text)); at < size;) {
        const auto start = at;
        UChar32 scalar = 0;
        U8_NEXT(bytes, at, size, scalar);
        if (scalar < 0) return static_cast<std::size_t>(start);
    }
    return std::string_view::npos;
}

std::string repairedUtf8(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t bad = firstInvalidUtf8(text.substr(at));
        if (bad == std::string_view::npos) return result.append(text.substr(at));
        result.append(text.substr(at, bad));
        at += bad;
        result.append("\uFFFD");
        at += scalarAt(text, at).size;
    }
    return result;
}

}  // namespace tapcore

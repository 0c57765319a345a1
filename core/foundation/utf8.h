#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tapcore {

// Text as bytes and scalars: UTF-8, and what is done with bytes that are not. What a reader takes for a
// character may be several scalars: see characters.h.

/// A scalar of a text, and how many bytes it takes there.
struct Scalar {
    char32_t value;
    std::size_t size;
};

/// The scalar that starts at a byte of `text`; U+FFFD for bytes that are not UTF-8. `at` is in the text.
Scalar scalarAt(std::string_view text, std::size_t at);

/// The first scalar of `text`; U+FFFD for bytes that are not UTF-8, and for an empty text.
char32_t firstScalar(std::string_view text);

/// A scalar as UTF-8; U+FFFD for what is not a scalar (a surrogate, or past U+10FFFF).
std::string utf8(char32_t scalar);

/// Whether a unit of UTF-16 is half of a pair: no scalar has such a value.
constexpr bool isSurrogate(char32_t unit) { return unit >= 0xD800 && unit < 0xE000; }

/// Whether all bytes of `text` are ASCII.
bool isAscii(std::string_view text);

/// The place of the first byte that is not UTF-8, or npos when all of `text` is.
std::size_t firstInvalidUtf8(std::string_view text);

/// `text` with every byte sequence that is not UTF-8 replaced by U+FFFD.
std::string repairedUtf8(std::string_view text);

}  // namespace tapcore

#pragma once

namespace tapcore {

// Kinds of ASCII characters, the same in every locale. Other bytes belong to none of the kinds.

constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }
constexpr bool isCapital(char c) { return c >= 'A' && c <= 'Z'; }
constexpr bool isSmallLetter(char c) { return c >= 'a' && c <= 'z'; }
constexpr bool isAsciiLetter(char c) { return isCapital(c) || isSmallLetter(c); }

}  // namespace tapcore

#pragma once

#include <array>

#include "core/counting/tally.h"

namespace tappora {

/// The keys that type, by their codes, as they follow each other from left to right on every board. Beside
/// them, boards differ: a key left of "1", one beside the left shift, and the one with the backslash.
namespace TypingRows {

using tapcore::KeyCode;

inline constexpr std::array<KeyCode, 12> digits = {18, 19, 20, 21, 23, 22, 26, 28, 25, 29, 27, 24};
inline constexpr std::array<KeyCode, 12> upper = {12, 13, 14, 15, 17, 16, 32, 34, 31, 35, 33, 30};
inline constexpr std::array<KeyCode, 11> home = {0, 1, 2, 3, 5, 4, 38, 40, 37, 41, 39};
inline constexpr std::array<KeyCode, 10> lower = {6, 7, 8, 9, 11, 45, 46, 43, 47, 44};

/// The key with the backslash: at the end of the home row on an ISO board, above it on an ANSI board.
inline constexpr KeyCode backslash = 42;
/// Left of "1" on an ISO board; on others, the key that only ISO boards have beside the left shift.
inline constexpr KeyCode section = 10;
/// Beside the left shift on an ISO board; on others, left of "1".
inline constexpr KeyCode grave = 50;

}  // namespace TypingRows
}  // namespace tappora

#pragma once

#include <array>
#include <cstdint>

#include "core/counting/key_face.h"
#include "core/counting/tally.h"
#include "core/foundation/raw_values.h"

namespace tapcore {

/// What keys are for, as far as one can tell from what they print unshifted.
enum class KeyClass { letter, digit, mark, space, navigation, correction, modifier, other };
inline constexpr std::size_t keyClasses = 8;
inline constexpr RawValues<KeyClass, keyClasses> keyClassWords{
    {"letters", "digits", "marks", "space", "navigation", "correction", "modifiers", "other"}};

/// Delete and forward delete.
inline constexpr std::array<KeyCode, 2> correctingKeys = {51, 117};

/// Letters, digits and marks are keys that print one character. Correction is delete and forward delete.
KeyClass classOf(KeyCode code, const Legends& legends);

/// Presses by class.
using ClassCounts = std::array<std::int64_t, keyClasses>;
ClassCounts countsByClass(const Tally::KeyCounts& counts, const Legends& legends);

}  // namespace tapcore

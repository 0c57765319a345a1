#pragma once

#include <map>

#include "core/counting/tally.h"

namespace tapcore {

/// Under which code the presses of a key are to be reported: the user's own key remapping. It is one step: a
/// key that is mapped to a mapped key goes no further, so that two keys can trade places.
using KeyRemap = std::map<KeyCode, KeyCode>;

/// The code that a key is reported under: its own when the map does not name it.
KeyCode remapped(KeyCode code, const KeyRemap& remap);

/// Counts under their new codes. Those that meet under one code add up; fatal when a sum leaves 64 bits.
Tally::KeyCounts remapped(const Tally::KeyCounts& counts, const KeyRemap& remap);
Tally::ChordCounts remapped(const Tally::ChordCounts& counts, const KeyRemap& remap);

}  // namespace tapcore

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "core/counting/key_face.h"
#include "core/counting/tally.h"

namespace tapcore {

/// One line of a list of top shortcuts.
struct ChordRow {
    Tally::Chord chord;
    std::int64_t count = 0;
    std::vector<std::string> keys;  ///< the chord as separate key faces

    const Tally::Chord& id() const { return chord; }
    bool operator==(const ChordRow&) const = default;
};

/// One line of a list of top keys.
struct KeyRow {
    KeyCode keyCode = 0;
    std::string name;
    std::int64_t count = 0;
};

/// The most used keys, at most `limit`, by count descending and then by key code; counts below 1 are left
/// out.
std::vector<KeyRow> topKeys(const Tally::KeyCounts& counts, const Legends& legends, std::size_t limit);

/// Chords and their keys, as people read them.
namespace Chords {

/// The name of a key: its first legend, a single character upper-cased, or "key 105" for a key without one.
std::string name(KeyCode keyCode, const Legends& legends);

/// The faces of a chord: ⌃ ⌥ ⇧ ⌘ fn as held, then the key's name.
std::vector<std::string> keys(const Tally::Chord& chord, const Legends& legends);

/// Faces joined into one short label: "⇧⌘S", "⌘ F5", "⌘ Space".
std::string compact(const std::vector<std::string>& keys);

/// The most used chords, at most `limit`, by count descending and then by chord; counts below 1 are left out.
std::vector<ChordRow> top(const Tally::ChordCounts& chords, const Legends& legends, std::int64_t limit);

}  // namespace Chords

}  // namespace tapcore

#include "core/counting/key_remap.h"

namespace tapcore {

KeyCode remapped(KeyCode code, const KeyRemap& remap) {
    const auto found = remap.find(code);
    return found == remap.end() ? code : found->second;
}

Tally::KeyCounts remapped(const Tally::KeyCounts& counts, const KeyRemap& remap) {
    Tally::KeyCounts result;
    for (const auto& [code, count] : counts) addChecked(result[remapped(code, remap)], count);
    return result;
}

Tally::ChordCounts remapped(const Tally::ChordCounts& counts, const KeyRemap& remap) {
    Tally::ChordCounts result;
    for (const auto& [chord, count] : counts)
        addChecked(result[{chord.modifiers, remapped(chord.keyCode, remap)}], count);
    return result;
}

}  // namespace tapcore

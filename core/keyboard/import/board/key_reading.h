#pragma once

#include <optional>
#include <vector>

#include "core/keyboard/import/board/board_draft.h"
#include "core/keyboard/import/board/key_names.h"

namespace tapcore {

/// What a key's legends, or a keymap, say of what it sends: nothing, a name, or a character.
struct KeyReading {
    std::optional<NamedCodes> named = {};
    const KeyName* typed = nullptr;
    bool isShiftedOnly = false;  ///< the character is the one that `typed` has with shift

    bool saysNothing() const { return !named && !typed; }
    /// Whether a key of this code would be read so.
    bool allows(KeyCode code) const;
};

/// What one key says of what it sends.
KeyReading readingOf(const DraftKey& key);

/// What each key says, in their order.
std::vector<KeyReading> readingsOf(const std::vector<DraftKey>& keys);

/// Whether so few of the keys say which character they type that the file counts as one without legends.
bool lackLegends(const std::vector<KeyReading>& readings);

}  // namespace tapcore

#pragma once

#include <string>
#include <vector>

#include "core/keyboard/import/board/board_draft.h"
#include "core/keyboard/import/board/key_reading.h"
#include "core/keyboard/import/board/known_board.h"

namespace tapcore {

/// What is to be told of the codes that keys were given, a sentence each.
struct CodesTold {
    std::vector<std::string> guessed;  ///< codes that a key's place speaks for, and its legend does not
    std::vector<std::string> without;  ///< keys left without a code, and why
};

/// Gives the keys of a draft their codes, each code once. A keymap decides for all keys; without one, a name
/// ("Esc", "⇧", "PgUp") gives its own code; of a pair such as the shift keys, the one of its side, or else
/// the other. A character gives the code of the key that types it on the US layout; but where the known
/// board's places decide, they do, so that "Z" and "Y" of a German board count where they are. Keys that say
/// nothing known have the code of their place where that speaks for itself. A wide blank key is space.
CodesTold giveCodes(std::vector<DraftKey>& keys, const std::vector<KeyReading>& readings,
                    const KnownBoard& alike);

}  // namespace tapcore

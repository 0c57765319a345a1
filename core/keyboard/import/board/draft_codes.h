#pragma once

#include <string>
#include <vector>

#include "core/keyboard/import/board/board_draft.h"

namespace tapcore {

/// Gives the keys of a draft their codes, each code once. A name ("Esc", "⇧", "PgUp") gives its own; of a
/// pair such as the shift keys, the one of its side, or else the other. A character gives the code of the key
/// that types it on the US layout; but where a known board has keys at the same places and most characters
/// are where it has them, the places decide, so that "Z" and "Y" of a German board count where they are. A
/// wide blank key is space.
///
/// `alike` holds for each key the known board's one, or null. Returns a sentence for each key left without a
/// code.
std::vector<std::string> giveCodes(std::vector<DraftKey>& keys, const std::vector<const Board::Key*>& alike);

}  // namespace tapcore

#pragma once

#include "core/keyboard/import/board/board_draft.h"

namespace tapcore {

class JsonValue;

/// Reads a VIA definition, the JSON that describes a keyboard to the remapping programs VIA and Vial. Its
/// keys carry their place in the switch matrix instead of legends. Of each layout option ("Split Backspace")
/// choice 0 stays and the others are dropped, so that nothing is drawn twice; encoders are dropped too.
/// Throws JsonError, with the place, for what is not such a definition.
BoardDraft readViaBoard(const JsonValue& definition);

}  // namespace tapcore

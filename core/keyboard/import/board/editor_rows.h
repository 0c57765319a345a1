#pragma once

#include <string>
#include <vector>

#include "core/keyboard/import/board/board_draft.h"

namespace tapcore {

class JsonValue;

/// A key in the rows that keyboard editors write.
struct EditorKey {
    DraftKey draft;
    bool isDecal = false;  ///< only drawn: a logo, a label
};

/// Reads the rows of Keyboard Layout Editor: arrays of legends, each after the members that change where and
/// how large it is. A cursor runs through them: a key is placed at it and moves it to its right end; the next
/// row starts one unit lower at the x of the rotation's centre, which is where setting "rx" or "ry" puts the
/// cursor too. Throws JsonError, with the place, for what the editor would refuse.
std::vector<EditorKey> readEditorRows(const JsonValue& rows);

/// A file of that editor: its rows, downloaded or raw, after the document's own data (name, author) where it
/// has some. Decals are dropped.
BoardDraft readEditorBoard(const JsonValue& document);

}  // namespace tapcore

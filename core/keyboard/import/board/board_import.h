#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/keyboard/board.h"
#include "core/keyboard/import/board/keymap_file.h"

namespace tapcore {

/// What an imported board is called, and which layout of several it has.
struct BoardImportOptions {
    std::string file = {};                   ///< the file's name, used for what nothing else says
    std::optional<std::string> id = {};      ///< made from the name when none is given
    std::optional<std::string> name = {};    ///< the file's own when none is given
    std::optional<std::string> maker = {};   ///< the file's own when none is given
    std::optional<std::string> layout = {};  ///< for QMK files with several layouts
    std::optional<Keymap> keymap = {};       ///< what the keys send for certain
};

struct BoardImport {
    Board board;
    std::vector<std::string> dropped;  ///< what of the file is not in the board, and why, one sentence each
    std::vector<std::string> guessed;  ///< which key codes only the places of the keys speak for
    std::vector<std::string> withoutCode;  ///< which keys have no key code, and why
    bool takesKeymap = false;  ///< whether a keymap, which was not given, can say what the keys send
};

/// Reads a keyboard file: rows of Keyboard Layout Editor, a VIA definition, or QMK's `info.json` or
/// `keyboard.json`, each in strict or lenient JSON. Keys get codes from their legends, and hands, fingers and
/// rows from their places; a key that is where one of the `known` boards has it is taken for that one. A
/// board that begins left of or above 0, or that lost keys, is moved to begin there. Throws JsonError, with
/// the place, for what is not such a file.
BoardImport importBoard(std::string_view text, const std::vector<Board>& known,
                        const BoardImportOptions& options = {});

}  // namespace tapcore

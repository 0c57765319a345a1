#pragma once

#include <optional>
#include <string>

#include "core/keyboard/import/board/board_draft.h"

namespace tapcore {

class JsonValue;

/// Reads the `info.json` or `keyboard.json` of the QMK firmware. Of several layouts the one named `layout` is
/// read, under its own name or an alias; when none is named, the only one or the one called "LAYOUT". Keys
/// that are encoders are dropped. Throws JsonError, with the place or the names to choose from.
BoardDraft readFirmwareBoard(const JsonValue& info, const std::optional<std::string>& layout);

}  // namespace tapcore

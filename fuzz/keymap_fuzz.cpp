// Keymaps that firmware and its editors saved, from any bytes: read and given to a board, or refused.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/foundation/json_fields.h"
#include "core/keyboard/import/board/board_import.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tapcore;
    constexpr std::string_view boards[] = {
        R"({"layouts": {"LAYOUT": {"layout": [{"matrix": [0, 0], "x": 0, "y": 0}, {"matrix": [1, 1], "x": 1, "y": 0}]}}})",
        R"({"name": "Two", "matrix": {"rows": 2, "cols": 2}, "layouts": {"keymap": [["0,0", "1,1"]]}})"};
    for (const std::string_view board : boards) try {
            const std::string_view text(reinterpret_cast<const char*>(data), size);
            importBoard(board, {}, {.keymap = readKeymap(text)});
        } catch (const KeymapError&) {
            // Said so.
        }
    return 0;
}

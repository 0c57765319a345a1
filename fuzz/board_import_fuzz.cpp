#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "core/foundation/json_fields.h"
#include "core/keyboard/import/board/board_import.h"

namespace {

using namespace tapcore;

/// A board of three keys, so that places are compared too.
std::vector<Board> known() {
    return {{.id = "known",
             .keys = {{.id = "a", .keyCode = KeyCode{0}},
                      {.id = "s", .keyCode = KeyCode{1}, .x = 1},
                      {.id = "space", .keyCode = KeyCode{49}, .y = 1, .w = 2}}}};
}

/// What is imported is sound, begins at the origin and survives being written.
void use(const Board& board) {
    if (!board.problems().empty()) std::abort();
    if (Board::parse(board.text()) != board) std::abort();
    const Board::Rect bounds = board.bounds();
    if (bounds.x < -1e-6 || bounds.y < -1e-6) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::vector<Board> boards = known();
    try {
        const std::string_view text(reinterpret_cast<const char*>(data), size);
        use(importBoard(text, boards, {.file = "fuzz.json"}).board);
    } catch (const JsonError&) {
        // Not a keyboard file: said so.
    }
    return 0;
}

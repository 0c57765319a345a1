#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "core/foundation/json_fields.h"
#include "core/keyboard/board.h"
#include "core/keyboard/heatmap.h"
#include "core/keyboard/load.h"

namespace {

/// A board that was read is one that can be written, checked, measured and counted over.
void use(const tapcore::Board& board) {
    if (tapcore::Board::parse(board.text()) != board) std::abort();
    if (board.problems().empty() && board.keys.empty()) std::abort();
    (void)board.bounds();
    const tapcore::Tally::KeyCounts counts = {{0, 10}, {36, 1'000'000}, {49, 1}};
    const tapcore::Heatmap map(board, {{0, {"a", "A"}}}, counts, {49});
    if (map.cells.size() != board.keys.size()) std::abort();
    (void)map.top(3);
    (void)tapcore::Load(board, {}, counts, {49}, {{0, 36}});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        use(tapcore::Board::parse(std::string_view(reinterpret_cast<const char*>(data), size)));
    } catch (const tapcore::JsonError&) {
        // Not a board: said so.
    }
    return 0;
}

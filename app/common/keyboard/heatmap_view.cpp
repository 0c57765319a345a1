#include "app/common/keyboard/heatmap_view.h"

#include <fmt/format.h>

#include <utility>

#include "app/common/command_line/command_line.h"
#include "app/common/harmless_text.h"
#include "core/counting/chords.h"
#include "core/counting/key_face.h"
#include "core/foundation/characters.h"
#include "core/foundation/integers.h"

namespace tappora {
namespace {

/// Keys print a letter whose capital is more than one character, as that of ß is, as it is.
std::vector<std::string> asPrinted(const std::vector<std::string>& face,
                                   const std::vector<std::string>& legend) {
    const bool isLetter = face.size() == 1 && !legend.empty() && tapcore::isSingleCharacter(legend.front());
    if (!isLetter || tapcore::isSingleCharacter(face.front())) return face;
    return {legend.front()};
}

KeyAmount amountOf(const HeatmapOptions& options) {
    return options.counts ? KeyAmount::count : options.percent ? KeyAmount::percent : KeyAmount::none;
}

}  // namespace

void addHeatmapOptions(CommandSyntax& command, HeatmapOptions& options) {
    addBoardCountsOptions(command, options, "the cells and the most pressed keys");
    const Option counts = command.flag("--counts", options.counts, "Show the number of presses on each key");
    command.flag("--percent", options.percent, "Show the share of each key in per cent").excludes(counts);
    command.flag(
        "--names,!--no-names", options.names,
        "Show names and signs on keys too, or only letters and numbers; the folder's choice when not given");
}

std::vector<std::string> HeatmapView::face(const tapcore::Heatmap::Cell& cell) const {
    std::optional<std::string> label;
    if (cell.key.keyCode) label = config.label(*cell.key.keyCode, board.id);
    if (label) label = harmlessLine(*label);
    const auto shown = tapcore::KeyFace::shown(cell.legend, label, names);
    return label ? shown : asPrinted(shown, cell.legend);
}

std::string HeatmapView::amountText(const tapcore::Heatmap::Cell& cell) const {
    if (amount == KeyAmount::none || cell.off || cell.count == 0) return "";
    return amount == KeyAmount::count ? tapcore::grouped(cell.count) : percentText(cell.count, total);
}

HeatmapView heatmapView(const HeatmapOptions& options, const Environment& environment) {
    BoardCounts on = boardCounts(options, environment);
    tapcore::Heatmap heatmap(on.board, on.layout.names(), on.counts, on.leftOutCodes);
    const std::int64_t total = heatmap.total();
    const bool names = options.names.value_or(on.config.namedKeys);
    return {std::move(on), std::move(heatmap), total, amountOf(options), names};
}

std::vector<std::string> notes(const HeatmapView& view) {
    std::vector<std::string> names;
    for (const tapcore::KeyCode code : view.leftOutCodes)
        names.push_back(tapcore::Chords::name(code, view.layout.names()));
    std::vector<std::string> lines;
    if (!names.empty()) lines.push_back(fmt::format("Left out: {}", fmt::join(names, ", ")));
    if (auto note = offBoardNote(view.heatmap.offBoard)) lines.push_back(std::move(*note));
    return lines;
}

}  // namespace tappora

#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "app/common/command_line/command_line.h"
#include "app/common/command_line/companion.h"
#include "app/common/command_line/records_json.h"
#include "app/common/keyboard/heatmap_view.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/common/terminal/terminal.h"
#include "app/tappora/commands.h"
#include "app/tappora/terminal_heatmap.h"

namespace tappora {
namespace {

using tapcore::Heatmap;

nlohmann::json heatmapJson(const HeatmapView& view) {
    nlohmann::json cells = nlohmann::json::array();
    for (const Heatmap::Cell& cell : view.heatmap.cells)
        cells.push_back({{"key", cell.key.encoded()},
                         {"legend", cell.legend},
                         {"count", cell.count},
                         {"step", cell.step},
                         {"off", cell.off}});
    nlohmann::json top = nlohmann::json::array();
    for (const Heatmap::TopKey& key : view.heatmap.top(static_cast<std::int64_t>(view.heatmap.cells.size())))
        top.push_back(
            {{"name", key.name}, {"count", key.count}, {"percent", key.percent}, {"code", *key.code}});
    return {{"from", view.period.first.description()},
            {"to", view.period.last.description()},
            {"board", view.board.id},
            {"layout", view.layout.id},
            {"color", view.color.rawValue()},
            {"cells", std::move(cells)},
            {"top", std::move(top)},
            {"offBoard", view.heatmap.offBoard},
            {"busiest", view.heatmap.busiest},
            {"total", view.total}};
}

std::string topLine(const Heatmap& heatmap) {
    std::string line;
    for (const Heatmap::TopKey& key : heatmap.top(8))
        line += fmt::format("{}{} {} %", line.empty() ? "" : ", ", key.name, key.percent);
    return line;
}

/// Instead of a board that has no place on a terminal.
std::string notDrawn(const tapcore::Board::Rect& bounds) {
    constexpr double most = 10'000;  // key units; no picture holds many more
    const bool hasPicture = bounds.w <= most && bounds.h <= most;
    return hasPicture ? "This board has no place here; -o FILE.svg draws it.\n"
                      : "This board is too large to be drawn.\n";
}

std::string heatmapText(const HeatmapView& view, const Terminal& terminal) {
    std::string text = terminal.bold(title(view.board)) + "\n" +
                       terminal.faint(subtitle(view, view.total, terminal.unicode)) + "\n\n";
    const std::string board = heatBoard(view, terminal);
    text += board.empty() ? notDrawn(view.board.bounds()) : board;
    text += "\n" + heatLegend(view, terminal);
    const std::string top = topLine(view.heatmap);
    if (!top.empty()) text += "\nMost pressed: " + top + "\n";
    for (const std::string& note : notes(view)) text += terminal.faint(note) + "\n";
    return text;
}

}  // namespace

void heatmapCommand(CommandLine& line, const Environment& environment) {
    HeatmapOptions options;
    line.describe("Draw how often each key was pressed on the keyboard, in the terminal or as a picture",
                  "tappora heatmap --from 2026-09-01 --board macbook-iso --percent -o september.svg");
    addHeatmapOptions(line, options);
    line.parse();
    if (options.output) becomePainter("heatmap", line.arguments());

    const HeatmapView view = heatmapView(options, environment);
    print(options.json ? jsonText(heatmapJson(view)) : heatmapText(view, Terminal::of(environment)));
}

}  // namespace tappora

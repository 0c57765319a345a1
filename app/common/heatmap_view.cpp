#include "app/common/heatmap_view.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>

#include "app/common/left_out.h"
#include "app/common/terminal.h"
#include "core/counting/chords.h"
#include "core/counting/key_face.h"

namespace tappora {
namespace {

std::string colorNames() {
    std::string names;
    for (const tapcore::MapColor color : tapcore::MapColor::allCases)
        names.append(names.empty() ? "" : ", ").append(color.rawValue());
    return names;
}

tapcore::MapColor colorOf(std::string_view what, const std::string& name) {
    const auto color = tapcore::MapColor::parse(name);
    if (!color)
        throw UsageError(fmt::format("{}: no such colour: {}; use one of {}", what, name, colorNames()));
    return *color;
}

KeyAmount amountOf(const HeatmapOptions& options) {
    return options.counts ? KeyAmount::count : options.percent ? KeyAmount::percent : KeyAmount::none;
}

}  // namespace

tapcore::MapColor chosenColor(const std::optional<std::string>& option, const Environment& environment) {
    constexpr const char* setting = "appearance.mapColor";
    if (option) return colorOf("--color", *option);
    const auto set = Settings::read(environment).text(setting);
    return set ? colorOf(setting, *set) : tapcore::MapColor(tapcore::MapColor::usual);
}

void addHeatmapOptions(CLI::App& command, HeatmapOptions& options) {
    addPeriodOptions(command, options.dates, HeatmapView::usualDays);
    addKeyboardOptions(command, options.keyboard);
    command.add_option("--color", options.color, "The colour of the keys: " + colorNames())
        ->type_name("COLOR");
    command.add_flag("--dark", options.dark, "On a dark ground");
    addLeaveOutOption(command, options.leaveOut);
    auto* counts = command.add_flag("--counts", options.counts, "Write its presses on each key");
    command.add_flag("--percent", options.percent, "Write its share on each key")->excludes(counts);
    command.add_flag_callback(
        "--no-names", [&options] { options.names = false; },
        "Leave keys blank that print no letter and no number");
    command.add_option("-o,--output", options.output, "Write a picture: FILE.svg, FILE.png or FILE.pdf")
        ->type_name("FILE");
    command.add_flag("--json", options.json, "Print the cells and the most pressed keys as JSON")
        ->excludes("--output");
    addFolderOptions(command, options.folder);
}

std::vector<std::string> HeatmapView::face(const tapcore::Heatmap::Cell& cell) const {
    return tapcore::KeyFace::shown(cell.legend, std::nullopt, names);
}

std::string HeatmapView::amountText(const tapcore::Heatmap::Cell& cell) const {
    if (amount == KeyAmount::none || cell.off || cell.count == 0) return "";
    return amount == KeyAmount::count ? grouped(cell.count) : percentText(cell.count, total);
}

HeatmapView heatmapView(const HeatmapOptions& options, const Environment& environment) {
    const tapcore::Calendar calendar(environment.zone);
    const Period period = periodOf(options.dates, today(options.folder, environment, calendar), calendar,
                                   HeatmapView::usualDays);
    const tapcore::Store store = openStore(options.folder, environment);
    const Keyboards keyboards(environment, store);
    tapcore::Board board = keyboards.chosenBoard(options.keyboard);
    LegendSet layout = keyboards.chosenLayout(options.keyboard);
    const auto leftOut = leftOutCodes(options.leaveOut, layout.legends);
    const tapcore::MapColor color = chosenColor(options.color, environment);
    tapcore::FileProblems problems;
    const tapcore::Summary summary = store.summary(period.days, period.last, calendar, &problems);
    complainOf(problems);
    tapcore::Heatmap heatmap(board, layout.legends, summary.byKey, leftOut);
    const std::int64_t total = heatmap.total();
    std::vector<std::string> names;
    for (const tapcore::KeyCode code : leftOut) names.push_back(tapcore::Chords::name(code, layout.legends));
    return {.period = period,
            .board = std::move(board),
            .layout = std::move(layout),
            .heatmap = std::move(heatmap),
            .total = total,
            .color = color,
            .dark = options.dark,
            .amount = amountOf(options),
            .names = options.names,
            .leftOut = std::move(names)};
}

std::string title(const tapcore::Board& board) {
    return board.maker.empty() ? board.name : board.maker + " " + board.name;
}

std::string subtitle(const HeatmapView& view, bool unicode) {
    return fmt::format("{1}{0}{2}{0}{3}", unicode ? "  ·  " : ", ", description(view.period),
                       view.layout.name, pressesText(view.total));
}

std::vector<std::string> notes(const HeatmapView& view) {
    std::vector<std::string> lines;
    if (!view.leftOut.empty()) lines.push_back(fmt::format("Left out: {}", fmt::join(view.leftOut, ", ")));
    if (view.heatmap.offBoard > 0)
        lines.push_back(pressesText(view.heatmap.offBoard) + " of keys that this board does not have");
    return lines;
}

std::string pressesText(std::int64_t count) { return grouped(count) + (count == 1 ? " press" : " presses"); }

std::string percentText(std::int64_t count, std::int64_t total) {
    const double share = total == 0 ? 0 : static_cast<double>(count) * 100 / static_cast<double>(total);
    if (share > 0 && share < 0.05) return "<0.1 %";
    return fmt::format("{:.{}f} %", share, share < 10 && share > 0 ? 1 : 0);
}

}  // namespace tappora

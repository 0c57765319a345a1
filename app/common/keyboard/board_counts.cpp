#include "app/common/keyboard/board_counts.h"

#include <fmt/format.h>

#include <utility>

#include "app/common/command_line/command_line.h"
#include "app/common/keyboard/key_remaps.h"
#include "app/common/keyboard/leave_out.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "core/foundation/integers.h"

namespace tappora {
namespace {

tapcore::MapColor colorOf(std::string_view what, const std::string& name) {
    const auto color = tapcore::MapColor::parse(name);
    if (!color)
        throw UsageError(
            fmt::format("{}: {}", what, noSuch("colour", name, tapcore::MapColor::words.names())));
    return *color;
}

}  // namespace

tapcore::MapColor chosenColor(const std::optional<std::string>& option, const Environment& environment) {
    if (option) return colorOf("--color", *option);
    return *tapcore::MapColor::parse(*Settings::read(environment).text("appearance.mapColor"));
}

void addColorOption(CommandSyntax& command, std::optional<std::string>& color) {
    command.option("--color", color, "The colour family")
        .type(fmt::format("{}", fmt::join(tapcore::MapColor::words.words, "|")));
}

void addBoardCountsOptions(CommandSyntax& command, BoardCountsOptions& options, const std::string& printed) {
    addPeriodOptions(command, options.dates, BoardCounts::usualDays);
    addKeyboardOptions(command, options.keyboard);
    addLeaveOutOption(command, options.leaveOut);
    addColorOption(command, options.color);
    command.flag("--dark", options.dark, "Draw on a dark background");
    command.option("-o,--output", options.output, "Write a picture: an SVG, PNG or PDF file").type("FILE");
    command.flag("--json", options.json, "Print " + printed + " as JSON").excludes("--output");
    addFolderOptions(command, options.folder);
}

BoardCounts boardCounts(const BoardCountsOptions& options, const Environment& environment) {
    const tapcore::Calendar& calendar = environment.calendar;
    const Period period = periodOf(options.dates, today(options.folder, environment, calendar), calendar,
                                   BoardCounts::usualDays);
    const tapcore::Store store = openShown(options.folder, environment);
    const Keyboards keyboards(environment, store);
    tapcore::Board board = keyboards.chosenBoard(options.keyboard);
    LegendSet layout = keyboards.chosenLayout(options.keyboard);
    auto leftOut = leftOutCodes(options.leaveOut, layout);
    const tapcore::MapColor color = chosenColor(options.color, environment);
    tapcore::FileProblems problems;
    tapcore::Summary summary = store.summary(period.days, period.last, calendar, &problems);
    requireAnswer(problems, summary.isEmpty());
    return {.period = period,
            .board = std::move(board),
            .layout = std::move(layout),
            .counts = std::move(summary.byKey),
            .leftOutCodes = std::move(leftOut),
            .config = tapcore::FolderConfig::read(store.root),
            .color = color,
            .dark = options.dark};
}

std::string title(const tapcore::Board& board) {
    return board.maker.empty() ? board.name : board.maker + " " + board.name;
}

std::string subtitle(const BoardCounts& on, std::int64_t total, bool unicode) {
    return fmt::format("{1}{0}{2}{0}{3}", unicode ? "  ·  " : ", ", description(on.period), on.layout.name,
                       pressesText(total));
}

std::optional<std::string> offBoardNote(std::int64_t presses) {
    if (presses == 0) return std::nullopt;
    return pressesText(presses) + " of keys that this board does not have";
}

std::string pressesText(std::int64_t count) {
    return tapcore::grouped(count) + (count == 1 ? " press" : " presses");
}

std::string percentText(std::int64_t count, std::int64_t total) {
    const double share = total == 0 ? 0 : static_cast<double>(count) * 100 / static_cast<double>(total);
    if (share > 0 && share < 0.05) return "<0.1 %";
    return fmt::format("{:.{}f} %", share, share < 9.95 && share > 0 ? 1 : 0);
}

}  // namespace tappora

#include "app/paint/report_drawings.h"

#include <algorithm>
#include <array>
#include <functional>
#include <utility>
#include <vector>

#include "app/common/report/report_tables.h"
#include "app/paint/heatmap_picture.h"
#include "core/foundation/date_text.h"
#include "core/foundation/weekday_names.h"
#include "core/keyboard/heat_ramp.h"
#include "core/keyboard/heatmap.h"
#include "drawing/outline.h"
#include "widgets/heat_board.h"

namespace tappora {
namespace {

using drawing::Alignment;
using drawing::Font;
using drawing::Node;
using drawing::Rect;
using drawing::Style;
using drawing::Text;
using drawing::Transform;
using tapcore::Heatmap;
using tapcore::Report;

Node text(std::string text, double x, double y, Alignment alignment = Alignment::centre,
          const Style& style = drawing::secondary, double size = 8) {
    return {Text{.text = std::move(text),
                 .font = Font{.size = size}.withMonospacedDigits(),
                 .style = style,
                 .at = {x, y},
                 .alignment = alignment,
                 .anchor = Text::Anchor::middle},
            {}};
}

Node box(const Rect& rect, const Style& style, double radius = 2) {
    return drawing::filled(drawing::roundedRectangle(rect, std::min(radius, rect.height / 2)), style);
}

/// Of what nobody counted.
Node gap(const Rect& rect) {
    return drawing::stroked(drawing::roundedRectangle(rect.inset(0.5), 2), {.role = Style::Role::tertiary},
                            0.5);
}

/// The steps from cool to hot, between "less" and "more", with its right end there.
void addLegend(std::vector<Node>& parts, double right, double y, const tapcore::Words& words,
               tapcore::MapColor color) {
    constexpr double side = 9, pitch = 11;
    const double squares = pitch * static_cast<double>(Heatmap::steps + 1);
    const double left = right - 60 - squares;
    parts.push_back(text(words.text("report.page.less"), left - 4, y + side / 2, Alignment::trailing));
    for (std::int64_t step = 0; step <= Heatmap::steps; ++step)
        parts.push_back(box({left + pitch * static_cast<double>(step), y, side, side},
                            tapwidgets::heatStyle(step, color)));
    parts.push_back(
        text(words.text("report.page.more"), left + squares + 3, y + side / 2, Alignment::leading));
}

constexpr double legendHeight = 16;

std::vector<std::int64_t> countsOf(const ReportBars& bars) {
    std::vector<std::int64_t> counts;
    for (const ReportBars::Bar& bar : bars.bars) counts.push_back(bar.line.keystrokes.value_or(0));
    return counts;
}

}  // namespace

Drawn ReportDrawings::barsOf(const ReportBars& bars) const {
    constexpr double top = 14, bottom = 110, height = 126;
    const std::vector<std::int64_t> counts = countsOf(bars);
    const auto most =
        static_cast<double>(std::max<std::int64_t>(1, *std::max_element(counts.begin(), counts.end())));
    const double pitch = width / static_cast<double>(counts.size());
    const Style bar = tapwidgets::heatStyle(4, color);
    std::vector<Node> parts = {drawing::stroked(drawing::line({0, bottom}, {width, bottom}),
                                                {.role = Style::Role::quaternary}, 0.75)};
    for (std::size_t i = 0; i < counts.size(); ++i) {
        const Report::DayLine& line = bars.bars[i].line;
        const double x = pitch * static_cast<double>(i);
        const double tall = (bottom - top) * (line.keystrokes ? static_cast<double>(counts[i]) / most : 0.25);
        const Rect rect{x + pitch * 0.12, bottom - tall, pitch * 0.76, tall};
        if (!line.keystrokes) parts.push_back(gap(rect));
        else if (tall > 0) parts.push_back(box(rect, bar));
        if (bars.showsAmounts() && line.keystrokes)
            parts.push_back(text(words.number(counts[i]), x + pitch / 2, bottom - tall - 6));
        parts.push_back(text(bars.bars[i].label, x + pitch / 2, bottom + 9, Alignment::centre,
                             drawing::secondary, bars.showsAmounts() ? 9 : 7));
    }
    return {drawing::group(std::move(parts)), height};
}

Drawn ReportDrawings::calendarOf(const ReportBars& bars) const {
    constexpr double left = 26, top = 14;
    const std::size_t first = tapcore::firstWeekday(locale);
    const auto names = tapcore::weekdayNames(locale);
    const auto step = Heatmap::ranked(countsOf(bars));
    const std::size_t before = (bars.bars.front().line.day.weekday() + 7 - first) % 7;
    const auto columns = static_cast<double>((bars.bars.size() + before + 6) / 7);
    const double pitch = std::min((width - left) / columns, 14.0), side = pitch * 0.84;
    std::vector<Node> parts;
    for (std::size_t row = 0; row < 7; row += 2)
        parts.push_back(text(names[(first + row) % 7], left - 4,
                             top + pitch * static_cast<double>(row) + side / 2, Alignment::trailing,
                             drawing::secondary, 7));
    for (std::size_t i = 0; i < bars.bars.size(); ++i) {
        const Report::DayLine& line = bars.bars[i].line;
        const double x = left + pitch * static_cast<double>((i + before) / 7);
        const Rect rect{x, top + pitch * static_cast<double>((i + before) % 7), side, side};
        parts.push_back(line.keystrokes ? box(rect, tapwidgets::heatStyle(step(*line.keystrokes), color), 1.5)
                                        : gap(rect));
        if (line.day.day == 1)
            parts.push_back(text(std::to_string(line.day.month), x, top - 8, Alignment::leading));
    }
    const double below = top + pitch * 7 + 6;
    addLegend(parts, width, below, words, color);
    return {drawing::group(std::move(parts)), below + legendHeight};
}

Drawn ReportDrawings::hours() const {
    constexpr double left = 34;
    const double pitch = (width - left) / 24, side = pitch * 0.9, high = 13;
    const std::size_t first = tapcore::firstWeekday(locale);
    const auto names = tapcore::weekdayNames(locale);
    const auto& grid = report.figures.byWeekdayAndHour;
    std::vector<std::int64_t> counts;
    for (const auto& hours : grid) counts.insert(counts.end(), hours.begin(), hours.end());
    const auto step = Heatmap::ranked(counts);
    std::vector<Node> parts;
    for (std::size_t row = 0; row < 7; ++row) {
        const std::size_t weekday = (first + row) % 7;
        const double y = (high + 2) * static_cast<double>(row);
        parts.push_back(text(names[weekday], left - 6, y + high / 2, Alignment::trailing));
        for (std::size_t hour = 0; hour < 24; ++hour) {
            const Rect rect{left + pitch * static_cast<double>(hour), y, side, high};
            const bool isCounted = report.figures.countedDays[weekday] > 0;
            parts.push_back(isCounted ? box(rect, tapwidgets::heatStyle(step(grid[weekday][hour]), color))
                                      : gap(rect));
        }
    }
    const double below = (high + 2) * 7 + 6;
    for (std::size_t hour = 0; hour < 24; hour += 3)
        parts.push_back(text(tapcore::localHourText(hour, locale),
                             left + pitch * static_cast<double>(hour) + side / 2, below));
    addLegend(parts, width, below + 10, words, color);
    return {drawing::group(std::move(parts)), below + 10 + legendHeight};
}

Drawn ReportDrawings::keys() const {
    const Heatmap heatmap(keyboard.board, keyboard.names, report.figures.summary.byKey, {});
    HeatmapView view{{.period = {},
                      .board = keyboard.board,
                      .layout = {keyboard.layout, keyboard.layoutName, keyboard.legends},
                      .counts = report.figures.summary.byKey,
                      .leftOutCodes = {},
                      .config = {},
                      .color = color},
                     heatmap,
                     heatmap.total(),
                     KeyAmount::none,
                     true};
    KeysDrawing drawn = keysDrawing(view);
    if (!(drawn.size.width > 0)) return {drawing::group({}), 0};
    const double scale = std::min(width / drawn.size.width, 1.0);
    const Transform place =
        Transform::scaled(scale).then(Transform::moved((width - scale * drawn.size.width) / 2, 0));
    std::vector<Node> parts;
    parts.push_back(std::move(drawn.node));
    std::vector<Node> all = {drawing::group(std::move(parts), place)};
    const double below = scale * drawn.size.height + 8;
    addLegend(all, width, below, words, color);
    return {drawing::group(std::move(all)), below + legendHeight};
}

Drawn ReportDrawings::hands() const {
    using tapcore::Board;
    struct Shape {
        Board::Finger finger;
        double x, top, height;
    };
    constexpr double handsWidth = 360, height = 118, fingerWidth = 22;
    constexpr std::array<Shape, 5> left = {{{Board::Finger::pinky, 10, 44, 46},
                                            {Board::Finger::ring, 38, 24, 66},
                                            {Board::Finger::middle, 66, 14, 76},
                                            {Board::Finger::index, 94, 24, 66},
                                            {Board::Finger::thumb, 126, 70, 40}}};
    const tapcore::Load& load = report.load;
    std::vector<std::int64_t> counts;
    for (const auto& [striker, part] : load.byFinger) counts.push_back(part.presses);
    const auto step = Heatmap::ranked(counts);
    std::vector<Node> parts;
    for (const Board::Hand hand : {Board::Hand::left, Board::Hand::right}) {
        const bool isLeft = hand == Board::Hand::left;
        for (const Shape& shape : left) {
            const auto found = load.byFinger.find({hand, shape.finger});
            const tapcore::Load::Part part =
                found == load.byFinger.end() ? tapcore::Load::Part{} : found->second;
            const double x = isLeft ? shape.x : handsWidth - shape.x - fingerWidth;
            parts.push_back(box({x, shape.top, fingerWidth, shape.height},
                                tapwidgets::heatStyle(step(part.presses), color), 11));
            parts.push_back(text(percentOf(load.share(part), words) + " %", x + fingerWidth / 2,
                                 shape.top - 6, Alignment::centre, {}));
        }
        const auto found = load.byHand.find(hand);
        const double share = found == load.byHand.end() ? 0 : load.share(found->second);
        parts.push_back(text(percentOf(share, words) + " %", isLeft ? 62 : handsWidth - 62, 104,
                             Alignment::centre, {}, 10));
    }
    return {drawing::group(std::move(parts), Transform::moved((width - handsWidth) / 2, 0)), height};
}

}  // namespace tappora

#include "app/tappora/page_pictures.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <utility>

#include "app/common/report/report_tables.h"
#include "app/tappora/page_parts.h"
#include "core/counting/chords.h"
#include "core/counting/key_face.h"
#include "core/foundation/characters.h"
#include "core/foundation/date_text.h"
#include "core/foundation/weekday_names.h"
#include "core/keyboard/heat_ramp.h"
#include "core/keyboard/heatmap.h"
#include "core/reports/finding_text.h"
#include "drawing/svg_text.h"
#include "drawing/tile.h"
#include "widgets/heat_board.h"

namespace tappora {
namespace {

using drawing::svgNumber;
using tapcore::Heatmap;
using tapcore::Report;
using tapcore::Words;
namespace HeatRamp = tapcore::HeatRamp;

std::string colourOf(std::int64_t step, bool dark, tapcore::MapColor color) {
    const HeatRamp::RGB rgb = HeatRamp::rgb(*HeatRamp::hsb(step, dark, false, color));
    return drawing::svgColour({rgb.red, rgb.green, rgb.blue, 1});
}

std::string stepStyles(bool dark, tapcore::MapColor color) {
    std::string rules;
    for (std::int64_t step = 1; step <= Heatmap::steps; ++step) {
        const HeatRamp::Contrast contrast = *HeatRamp::contrast(step, dark, color);
        rules += fmt::format(".h{0} {{ fill: {1}; }} svg .on{0} {{ fill: {2}; }}\n", step,
                             colourOf(step, dark, color), contrast.white > contrast.black ? "#fff" : "#000");
    }
    return rules;
}

/// A picture that is one thing to a screen reader, unless parts of it can be reached.
std::string svg(double width, double height, std::string_view label, std::string_view content,
                std::string_view role = "img") {
    return fmt::format(
        "<div class=\"scroll\" tabindex=\"0\" role=\"group\" aria-label=\"{0}\"><svg viewBox=\"0 0 {1} "
        "{2}\" "
        "role=\"{3}\" aria-label=\"{0}\">\n{4}</svg></div>\n",
        escaped(label), svgNumber(width), svgNumber(height), role, content);
}

std::string text(double x, double y, std::string_view content, std::string_view anchor = "middle",
                 std::string_view kind = "soft") {
    return fmt::format("<text x=\"{}\" y=\"{}\" text-anchor=\"{}\" class=\"{}\">{}</text>\n", svgNumber(x),
                       svgNumber(y), anchor, kind, escaped(content));
}

std::string square(double x, double y, double side, std::string_view kind, std::string_view title) {
    return fmt::format(
        "<rect x=\"{}\" y=\"{}\" width=\"{}\" height=\"{}\" rx=\"3\" class=\"{}\"><title>{}</title></rect>\n",
        svgNumber(x), svgNumber(y), svgNumber(side), svgNumber(side), kind, escaped(title));
}

std::string amountOf(const ReportBars::Bar& bar, const Words& words) {
    const auto& keystrokes = bar.line.keystrokes;
    return bar.name + ": " + (keystrokes ? words.number(*keystrokes) : words.text("report.page.no_data"));
}

/// The steps of heat of some counts.
std::function<std::int64_t(std::int64_t)> stepsOf(std::vector<std::int64_t> counts) {
    return Heatmap::ranked(std::move(counts));
}

/// Whether a period has a day of that weekday.
bool hasWeekday(const Report& report, std::size_t weekday) {
    return std::any_of(report.days.begin(), report.days.end(),
                       [&](const Report::DayLine& line) { return line.day.weekday() == weekday; });
}

/// From "less" to "more".
std::string heatLegend(double x, double y, const Words& words) {
    std::string content = text(x, y + 11, words.text("report.page.less"), "end");
    for (std::int64_t step = 0; step <= Heatmap::steps; ++step)
        content +=
            fmt::format("<rect x=\"{}\" y=\"{}\" width=\"14\" height=\"14\" rx=\"3\" class=\"h{}\"/>\n",
                        svgNumber(x + 8 + 17 * static_cast<double>(step)), svgNumber(y), step);
    return content + text(x + 116, y + 11, words.text("report.page.more"), "start");
}

/// Draws the keys of a board with what each says.
class KeyPainter {
  public:
    static constexpr double unit = 52;

    KeyPainter(const Heatmap& heatmap, const tapcore::Board::Rect& bounds, const tapcore::Legends& legends,
               const Words& words)
        : heatmap_(heatmap), bounds_(bounds), legends_(legends), words_(words) {}

    std::string key(const Heatmap::Cell& cell) const {
        const tapcore::Board::Key& key = cell.key;
        const drawing::Tile tile =
            tapwidgets::tileOf(key.rect(), key.second, key.isTurned() ? key.r : 0, key.rx, key.ry);
        const drawing::Rect box = tile.box();
        const std::string said = told(cell);
        return fmt::format(
            "<g class=\"key\" tabindex=\"0\" role=\"img\" aria-label=\"{}\">"
            "<g transform=\"{}\"><path class=\"h{}\" d=\"{}\"/>\n{}</g>{}</g>\n",
            escaped(said), drawing::svgTransform(tile.placement(unit, {bounds_.x, bounds_.y})), cell.step,
            drawing::svgPath(tile.outline(unit)),
            face(cell, unit * (key.x - box.x + key.w / 2), unit * (key.y - box.y + key.h / 2)),
            text(unit * bounds_.w / 2, unit * bounds_.h + 24, said, "middle", "tip"));
    }

  private:
    std::string told(const Heatmap::Cell& cell) const {
        const std::string name = cell.key.keyCode && !cell.legend.empty()
                                     ? tapcore::Chords::name(*cell.key.keyCode, legends_)
                                     : cell.key.id;
        const std::int64_t total = std::max<std::int64_t>(heatmap_.total(), 1);
        return words_.text(
            "report.page.presses",
            {{"name", name},
             {"n", words_.number(cell.count)},
             {"share", percentOf(static_cast<double>(cell.count) / static_cast<double>(total), words_)}});
    }

    /// What is printed on the key: letters, marks and glyphs; names have no room.
    static std::string face(const Heatmap::Cell& cell, double x, double y) {
        const std::vector<std::string> lines = cell.faceLegend();
        std::string content;
        const double gap = 15;
        double at = y - gap * static_cast<double>(lines.size() - 1) / 2 + 5;
        for (const std::string& line : lines) {
            const std::string shown(tapcore::KeyFace::glyph(line).value_or(line));
            if (!shown.empty() && tapcore::columnCount(shown) <= 3)  // the space bar has no face
                content += text(x, at, shown, "middle", fmt::format("face on{}", cell.step));
            at += gap;
        }
        return content;
    }

    const Heatmap& heatmap_;
    const tapcore::Board::Rect& bounds_;
    const tapcore::Legends& legends_;
    const Words& words_;
};

}  // namespace

std::string heatStyles(tapcore::MapColor color) {
    return stepStyles(false, color) + "@media screen and (prefers-color-scheme: dark) {\n" +
           stepStyles(true, color) + "}\n";
}

std::string barsPicture(const ReportBars& bars, const Words& words) {
    constexpr double width = 900, height = 220, top = 22, bottom = 190;
    std::int64_t most = 1;
    for (const ReportBars::Bar& bar : bars.bars) most = std::max(most, bar.line.keystrokes.value_or(0));
    const double step = width / static_cast<double>(std::max<std::size_t>(bars.bars.size(), 1));
    std::string content = fmt::format("<path class=\"axis\" d=\"M0 {}H{}\"/>\n", bottom, width);
    for (std::size_t i = 0; i < bars.bars.size(); ++i) {
        const ReportBars::Bar& bar = bars.bars[i];
        const auto& keystrokes = bar.line.keystrokes;
        const double x = step * static_cast<double>(i);
        const double tall =
            (bottom - top) * static_cast<double>(keystrokes.value_or(most / 4)) / static_cast<double>(most);
        content += fmt::format(
            "<rect x=\"{}\" y=\"{}\" width=\"{}\" height=\"{}\" rx=\"3\" "
            "class=\"{}\"><title>{}</title></rect>\n",
            svgNumber(x + step * 0.12), svgNumber(bottom - tall), svgNumber(step * 0.76), svgNumber(tall),
            keystrokes ? "bar" : "gap", escaped(amountOf(bar, words)));
        if (!bar.label.empty()) content += text(x + step / 2, bottom + 18, bar.label);
        if (bars.showsAmounts() && keystrokes)
            content += text(x + step / 2, bottom - tall - 6, words.number(*keystrokes));
    }
    return svg(width, height, words.text("report.section." + std::string(bars.section())), content);
}

std::string yearPicture(const ReportBars& bars, const Words& words, const std::string& locale) {
    constexpr double side = 14, pitch = 17, left = 44, top = 24;
    const std::size_t first = tapcore::firstWeekday(locale);
    const auto names = tapcore::weekdayNames(locale);
    std::vector<std::int64_t> counts;
    for (const ReportBars::Bar& bar : bars.bars) counts.push_back(bar.line.keystrokes.value_or(0));
    const auto step = stepsOf(counts);
    std::string content;
    for (std::size_t row = 0; row < 7; row += 2)
        content +=
            text(left - 8, top + pitch * static_cast<double>(row) + 11, names[(first + row) % 7], "end");
    const std::size_t before = (bars.bars.front().line.day.weekday() + 7 - first) % 7;
    for (std::size_t i = 0; i < bars.bars.size(); ++i) {
        const Report::DayLine& line = bars.bars[i].line;
        const auto column = static_cast<double>((i + before) / 7);
        const auto row = static_cast<double>((i + before) % 7);
        content += square(left + pitch * column, top + pitch * row, side,
                          line.keystrokes ? fmt::format("h{}", step(*line.keystrokes)) : "gap",
                          amountOf(bars.bars[i], words));
        if (line.day.day == 1)
            content += text(left + pitch * (row == 0 ? column : column + 1), top - 8,
                            std::to_string(line.day.month), "start");
    }
    const double width = left + pitch * 54;
    return svg(width, top + pitch * 7 + 30, words.text("report.section.year"),
               content + heatLegend(width - 170, top + pitch * 7 + 10, words));
}

std::string hoursPicture(const Report& report, const Words& words, const std::string& locale) {
    constexpr double side = 32, pitch = 35, left = 60, top = 6;
    const std::size_t first = tapcore::firstWeekday(locale);
    const auto names = tapcore::weekdayNames(locale);
    const auto& grid = report.figures.byWeekdayAndHour;
    std::vector<std::int64_t> counts;
    for (const auto& hours : grid) counts.insert(counts.end(), hours.begin(), hours.end());
    const auto step = stepsOf(counts);
    std::string content;
    double below = top;
    for (std::size_t row = 0; row < 7; ++row) {
        const std::size_t weekday = (first + row) % 7;
        if (!hasWeekday(report, weekday)) continue;
        const double y = std::exchange(below, below + pitch);
        content += text(left - 10, y + 21, names[weekday], "end");
        for (std::size_t hour = 0; hour < 24; ++hour) {
            const bool isCounted = report.figures.countedDays[weekday] > 0;
            content += square(left + pitch * static_cast<double>(hour), y, side,
                              isCounted ? fmt::format("h{}", step(grid[weekday][hour])) : "gap",
                              fmt::format("{} {}: {}", names[weekday], tapcore::localHourText(hour, locale),
                                          words.number(grid[weekday][hour])));
        }
    }
    below += 14;
    for (std::size_t hour = 0; hour < 24; hour += 3)
        content += text(left + pitch * static_cast<double>(hour) + side / 2, below,
                        tapcore::localHourText(hour, locale));
    const double width = left + pitch * 24;
    return svg(width, below + 34, words.text("report.section.hours"),
               content + heatLegend(width - 170, below + 14, words));
}

std::string keyboardPicture(const Report& report, const tapcore::ReportKeyboard& keyboard,
                            const Words& words) {
    const Heatmap heatmap(keyboard.board, keyboard.names, report.figures.summary.byKey, {});
    const tapcore::Board::Rect bounds = keyboard.board.bounds();
    if (heatmap.busiest == 0 || bounds.w <= 0) return "";
    const KeyPainter painter(heatmap, bounds, keyboard.names, words);
    std::string content;
    for (const Heatmap::Cell& cell : heatmap.cells) content += painter.key(cell);
    const double width = KeyPainter::unit * bounds.w;
    const double below = KeyPainter::unit * bounds.h + 34;
    return svg(width, below + 20, words.text("report.section.keyboard"),
               content + heatLegend(width - 170, below, words), "group");
}

std::string handsPicture(const Report& report, const Words& words) {
    struct Shape {
        tapcore::Board::Finger finger;
        double x, top, height;
    };
    using tapcore::Board;
    constexpr double width = 720, height = 250, fingerWidth = 40, palm = 170;
    constexpr std::array<Shape, 5> left = {{{Board::Finger::pinky, 20, 90, 90},
                                            {Board::Finger::ring, 74, 46, 130},
                                            {Board::Finger::middle, 128, 26, 150},
                                            {Board::Finger::index, 182, 46, 130},
                                            {Board::Finger::thumb, 246, 140, 80}}};
    std::vector<std::int64_t> counts;
    for (const auto& [striker, part] : report.load.byFinger) counts.push_back(part.presses);
    const auto step = stepsOf(counts);
    std::string content;
    for (const Board::Hand hand : {Board::Hand::left, Board::Hand::right}) {
        const bool isLeft = hand == Board::Hand::left;
        for (const Shape& shape : left) {
            const tapcore::Load::Striker striker{hand, shape.finger};
            const auto found = report.load.byFinger.find(striker);
            const std::int64_t presses = found == report.load.byFinger.end() ? 0 : found->second.presses;
            const double share = found == report.load.byFinger.end() ? 0 : report.load.share(found->second);
            const double x = isLeft ? shape.x : width - shape.x - fingerWidth;
            content += fmt::format(
                "<rect x=\"{}\" y=\"{}\" width=\"{}\" height=\"{}\" rx=\"20\" "
                "class=\"h{}\"><title>{}</title></rect>\n",
                svgNumber(x), svgNumber(shape.top), svgNumber(fingerWidth), svgNumber(shape.height),
                step(presses), escaped(nameOf(striker, words) + ": " + percentOf(share, words) + " %"));
            content +=
                text(x + fingerWidth / 2, shape.top - 8, percentOf(share, words) + " %", "middle", "face");
        }
        const auto found = report.load.byHand.find(hand);
        const double share = found == report.load.byHand.end() ? 0 : report.load.share(found->second);
        const double middle = isLeft ? 121 : width - 121;
        content += text(middle, palm + 52, percentOf(share, words) + " %", "middle", "face");
    }
    return svg(width, height, words.text("report.section.fingers"), content);
}

}  // namespace tappora

#include "app/paint/heatmap_picture.h"

#include <algorithm>
#include <utility>

#include "app/paint/sheet.h"
#include "core/counting/chords.h"
#include "core/foundation/characters.h"
#include "core/keyboard/heat_ramp.h"
#include "drawing/outline.h"
#include "drawing/tile.h"
#include "widgets/heat_board.h"

namespace tappora {
namespace {

using drawing::Alignment;
using drawing::Colour;
using drawing::Font;
using drawing::Node;
using drawing::Point;
using drawing::Rect;
using drawing::Style;
using drawing::Text;
using drawing::Tile;
using drawing::Transform;
using drawing::Weight;
using tapcore::Board;
using tapcore::Heatmap;
namespace HeatRamp = tapcore::HeatRamp;

/// Points to a key unit.
constexpr double unit = 54;

/// What the text on a step is written in.
Style ink(std::int64_t step, tapcore::MapColor color) {
    const auto on = [&](bool dark) {
        return Colour::grey(HeatRamp::whiteText(step, dark, color) ? 1 : 0, 0.95);
    };
    return step < 1 ? Style{.role = Style::Role::secondary} : Style::given(on(false), on(true));
}

/// Draws the keys of a view. A key's own plane has the corner of its box at 0.
class KeyPainter {
  public:
    KeyPainter(const HeatmapView& view, Point origin) : view_(view), origin_(origin) {}

    Node key(const Heatmap::Cell& cell) const {
        const Tile tile = tapwidgets::tileOf(cell.key.rect(), cell.key.second,
                                             cell.key.isTurned() ? cell.key.r : 0, cell.key.rx, cell.key.ry);
        std::vector<Node> parts = {cap(cell, tile.outline(unit))};
        const Rect box = tile.box();
        const Rect first{unit * (cell.key.x - box.x), unit * (cell.key.y - box.y), unit * cell.key.w,
                         unit * cell.key.h};
        addTexts(parts, cell, first);
        Node node = drawing::group(std::move(parts), tile.placement(unit, origin_));
        return drawing::labelled(std::move(node), name(cell), described(cell));
    }

  private:
    static constexpr double lineGap = 0.12 * unit;

    Node cap(const Heatmap::Cell& cell, drawing::Path outline) const {
        if (cell.off) return drawing::stroked(std::move(outline), {.role = Style::Role::tertiary}, 1);
        return drawing::filled(std::move(outline), tapwidgets::heatStyle(cell.step, view_.color));
    }

    /// The lines of the face with the amount below, all together in the middle of the key's first rectangle;
    /// on a low key they are one line.
    void addTexts(std::vector<Node>& parts, const Heatmap::Cell& cell, const Rect& room) const {
        std::vector<Text> lines = textsOn(cell, room);
        if (heightOf(lines) > room.height - 0.3 * unit) lines = oneLine(lines);
        double y = room.centre().y - heightOf(lines) / 2;
        for (Text& line : lines) {
            line.style = ink(cell.step, view_.color);
            line.at = {room.centre().x, y + line.font.capHeight() / 2};
            line.width = std::max(room.width - 0.26 * unit, 1.0);
            y += line.font.capHeight() + lineGap;
            parts.push_back({std::move(line), {}});
        }
    }

    static double heightOf(const std::vector<Text>& lines) {
        double height = lines.empty() ? 0 : lineGap * static_cast<double>(lines.size() - 1);
        for (const Text& line : lines) height += line.font.capHeight();
        return height;
    }

    static std::vector<Text> oneLine(const std::vector<Text>& lines) {
        std::string text;
        for (const Text& line : lines) text += (text.empty() ? "" : " ") + line.text;
        return {textOnKey(std::move(text), amountFont())};
    }

    std::vector<Text> textsOn(const Heatmap::Cell& cell, const Rect& room) const {
        const bool isNarrow = room.width < 1.4 * unit;
        std::vector<Text> lines;
        for (const std::string& line : view_.face(cell))
            for (std::string& part : isNarrow ? words(line) : std::vector{line})
                lines.push_back(textOnKey(std::move(part), faceFont(line)));
        std::string amount = view_.amountText(cell);
        if (!amount.empty()) lines.push_back(textOnKey(std::move(amount), amountFont()));
        std::erase_if(lines, [](const Text& line) { return line.text.empty(); });
        return lines;
    }

    /// Two words of a name are drawn one above the other when there is no room for one line.
    static std::vector<std::string> words(const std::string& line) {
        const auto blank = line.find(' ');
        if (blank == std::string::npos) return {line};
        return {line.substr(0, blank), line.substr(blank + 1)};
    }

    static Text textOnKey(std::string text, const Font& font) {
        return {.text = std::move(text),
                .font = font,
                .style = {},
                .at = {},
                .alignment = Alignment::centre,
                .anchor = Text::Anchor::middle,
                .minimumScale = 0.6};
    }

    static Font faceFont(const std::string& line) {
        return {.size = (tapcore::isSingleCharacter(line) ? 0.3 : 0.2) * unit, .weight = Weight::medium};
    }

    static Font amountFont() { return Font{.size = 0.18 * unit}.withMonospacedDigits(); }

    std::string name(const Heatmap::Cell& cell) const {
        if (cell.key.keyCode && !cell.legend.empty())
            return tapcore::Chords::name(*cell.key.keyCode, view_.layout.names());
        return cell.key.id;
    }

    std::string described(const Heatmap::Cell& cell) const {
        if (!cell.key.keyCode) return "sends nothing that is counted";
        return pressesText(cell.count) + ", " +
               (cell.off ? "left out" : percentText(cell.count, view_.total));
    }

    const HeatmapView& view_;
    Point origin_;  ///< what of the board is at the picture's 0
};

Node caption(std::string text, Point at, Alignment alignment = Alignment::leading) {
    return {Text{.text = std::move(text),
                 .font = Font{.size = 11},
                 .style = {.role = Style::Role::secondary},
                 .at = at,
                 .alignment = alignment,
                 .anchor = Text::Anchor::middle},
            {}};
}

/// The steps from cool to hot, between "less" and "more", and what an unused key looks like.
class Legend {
  public:
    static constexpr double height = 16;

    explicit Legend(tapcore::MapColor color) : color_(color) {}

    Node node() {
        word("unused", 48);
        swatch(tapwidgets::heatStyle(0, color_));
        x_ += 18;
        word("less", 32);
        for (std::int64_t step = 1; step <= Heatmap::steps; ++step)
            swatch(tapwidgets::heatStyle(step, color_));
        x_ += 2;
        word("more", 0);
        Node legend = drawing::group(std::move(parts_));
        return drawing::labelled(std::move(legend), "Colours",
                                 "from cool for keys pressed less to hot for those pressed more");
    }

  private:
    static constexpr double width = 30;

    void word(std::string text, double room) {
        parts_.push_back(caption(std::move(text), {x_, height / 2}));
        x_ += room;
    }

    void swatch(const Style& style) {
        parts_.push_back(drawing::filled(drawing::roundedRectangle({x_, 0, width, height}, 4), style));
        x_ += width + 4;
    }

    tapcore::MapColor color_;
    double x_ = 0;
    std::vector<Node> parts_;
};

/// What a board's keys are drawn within: the gap around the outermost is left away.
Rect drawnBounds(const Board& board) {
    const Rect bounds = tapwidgets::rectOf(board.bounds());
    return bounds.isEmpty() ? bounds : bounds.inset(Tile::gap);
}

Node boardNode(const HeatmapView& view, Point origin) {
    const KeyPainter painter(view, origin);
    std::vector<Node> keys;
    for (const Heatmap::Cell& cell : view.heatmap.cells) keys.push_back(painter.key(cell));
    Node board = drawing::group(std::move(keys));
    board.accessibility.label = "Keys";
    return board;
}

}  // namespace

KeysDrawing keysDrawing(const HeatmapView& view) {
    const Rect bounds = drawnBounds(view.board);
    if (bounds.isEmpty()) return {drawing::group({}), {}};
    return {boardNode(view, {bounds.x, bounds.y}), {unit * bounds.width, unit * bounds.height}};
}

drawing::Picture heatmapPicture(const HeatmapView& view) {
    constexpr double legendGap = 22;
    const Rect bounds = drawnBounds(view.board);
    const drawing::Size board{unit * bounds.width, unit * bounds.height};
    Node legend = drawing::group({Legend(view.color).node()}, Transform::moved(0, board.height + legendGap));
    return pictureOf({.title = title(view.board),
                      .subtitle = subtitle(view, view.total),
                      .content = drawing::group({boardNode(view, {bounds.x, bounds.y}), std::move(legend)}),
                      .size = {board.width, board.height + legendGap + Legend::height},
                      .notes = notes(view)});
}

}  // namespace tappora

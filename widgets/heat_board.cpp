#include "widgets/heat_board.h"

#include <algorithm>
#include <utility>

#include "core/keyboard/heat_ramp.h"
#include "drawing/tile.h"

namespace tapwidgets {
namespace {

using drawing::Colour;
using drawing::Node;
using drawing::Rect;
using drawing::Style;
using drawing::Tile;
using drawing::Transform;
namespace HeatRamp = tapcore::HeatRamp;

Colour colourOf(const HeatRamp::HSB& hsb) {
    const auto [red, green, blue] = HeatRamp::rgb(hsb);
    return {red, green, blue};
}

}  // namespace

Rect rectOf(const tapcore::Board::Rect& rect) { return {rect.x, rect.y, rect.w, rect.h}; }

Tile tileOf(const tapcore::Board::Rect& rect, const std::optional<tapcore::Board::Rect>& second,
            double degrees, std::optional<double> aboutX, std::optional<double> aboutY) {
    Tile tile{.parts = {rectOf(rect)}, .degrees = degrees, .aboutX = aboutX, .aboutY = aboutY};
    if (second) tile.parts.push_back(rectOf(*second));
    return tile;
}

Style heatStyle(std::int64_t step, tapcore::MapColor color) {
    const auto light = HeatRamp::hsb(step, false, false, color);
    const auto dark = HeatRamp::hsb(step, true, false, color);
    if (!light || !dark) return Style{.role = Style::Role::quaternary}.tonedTo(0.08).asAccentable();
    return Style::given(colourOf(*light), colourOf(*dark))
        .tonedTo(static_cast<double>(step) * 0.16 + 0.2)
        .asAccentable();
}

Node HeatBoard::drawing(const Rect& room) const {
    const double unit = std::min(room.width / bounds.w, room.height / bounds.h);
    std::vector<Node> tiles;
    tiles.reserve(keys.size());
    for (const auto& key : keys) {
        const Tile tile = tileOf({key.x, key.y, key.w, key.h}, key.second, key.r, key.rx, key.ry);
        std::vector<Node> parts;  // a list in braces would copy the outline
        parts.push_back(drawing::filled(tile.outline(unit), heatStyle(key.step, color)));
        tiles.push_back(drawing::group(std::move(parts), tile.placement(unit, {bounds.x, bounds.y})));
    }
    const Transform place =
        Transform::moved(room.centre().x - unit * bounds.w / 2, room.centre().y - unit * bounds.h / 2);
    return drawing::labelled(drawing::group(std::move(tiles), place), label);
}

}  // namespace tapwidgets

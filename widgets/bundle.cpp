#include "widgets/bundle.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "drawing/outline.h"
#include "widgets/heatmap_widget.h"
#include "widgets/hours_widget.h"
#include "widgets/today_widget.h"
#include "widgets/waiting.h"
#include "widgets/week_widget.h"

namespace tapwidgets {
namespace {

using drawing::Node;
using drawing::Style;

constexpr double margin = 16;
constexpr double corner = 22;

constexpr Family small[] = {Family::small};
constexpr Family medium[] = {Family::medium};
constexpr Family smallAndMedium[] = {Family::small, Family::medium};
constexpr Family mediumAndLarge[] = {Family::medium, Family::large};

/// The plate under a widget: the system's paper, and its tertiary fill on it.
Node container(const drawing::Size& size) {
    const auto plate = drawing::roundedRectangle({0, 0, size.width, size.height}, corner);
    return drawing::group({drawing::filled(plate, {.role = Style::Role::background}),
                           drawing::filled(plate, {.role = Style::Role::tertiaryFill})});
}

}  // namespace

const std::array<Widget, 4> bundle = {{
    {"TapToday", "today", small, todayContent},
    {"TapHours", "hours", medium, hoursContent},
    {"TapHeatmap", "heatmap", mediumAndLarge, heatmapContent},
    {"TapWeek", "week", smallAndMedium, weekContent},
}};

bool Widget::has(Family family) const {
    return std::find(families.begin(), families.end(), family) != families.end();
}

drawing::Picture picture(const Widget& widget, const Entry& entry, Family family, const Texts& texts) {
    const drawing::Size size = sizeOf(family);
    const drawing::Size room{size.width - 2 * margin, size.height - 2 * margin};
    auto content = entry.snapshot ? widget.content(*entry.snapshot, {room, texts.snapshot}) : std::nullopt;
    if (!content) content = waiting({room, texts.system}, texts.width);
    std::vector<Node> inner;  // lists in braces would copy all of the content
    inner.push_back(*std::move(content));
    std::vector<Node> parts;
    parts.push_back(container(size));
    parts.push_back(drawing::group(std::move(inner), drawing::Transform::moved(margin, margin)));
    Node whole = drawing::group(std::move(parts));
    whole.accessibility.label = texts.system.text(widget.nameKey());
    return {size, std::move(whole)};
}

}  // namespace tapwidgets

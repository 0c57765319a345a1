#include "widgets/bundle.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "drawing/outline.h"

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

template <class View>
std::optional<Node> content(const tapcore::WidgetSnapshot& snapshot, const Canvas& canvas) {
    return View{snapshot, canvas}.drawing();
}

/// What all widgets are made by.
template <class View>
constexpr Widget configuration(std::string_view kind, std::string_view name,
                               std::span<const Family> families) {
    return {kind, name, families, content<View>};
}

}  // namespace

const std::array<Widget, 4> bundle = {
    configuration<TodayWidget>("TapToday", "today", small),
    configuration<HoursWidget>("TapHours", "hours", medium),
    configuration<HeatmapWidget>("TapHeatmap", "heatmap", mediumAndLarge),
    configuration<WeekWidget>("TapWeek", "week", smallAndMedium),
};

drawing::Picture picture(const Widget& widget, const Entry& entry, Family family, const Texts& texts) {
    const drawing::Size size = sizeOf(family);
    const drawing::Size room{size.width - 2 * margin, size.height - 2 * margin};
    auto content = entry.snapshot ? widget.content(*entry.snapshot, {room, texts.snapshot}) : std::nullopt;
    if (!content) content = Waiting{{room, texts.system}, texts.width}.drawing();
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

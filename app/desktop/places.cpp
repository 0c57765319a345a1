#include "app/desktop/places.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "app/common/folder/settings.h"

namespace tappora {
namespace {

std::string key(const std::string& widget, const std::string& connector) {
    return "widgets.place." + widget + "@" + connector;
}

/// The setting that says which connector a widget was moved on last.
std::string lastKey(const std::string& widget) { return "widgets.place." + widget; }

std::optional<WidgetPlace> parse(const std::string& connector, const std::optional<std::string>& text) {
    int x = 0;
    int y = 0;
    if (!text || std::sscanf(text->c_str(), "%9d %9d", &x, &y) != 2) return std::nullopt;
    return WidgetPlace{connector, x, y};
}

int within(int at, double size, int room) {
    return std::clamp(at, 0, std::max(room - static_cast<int>(std::ceil(size)), 0));
}

/// How far a point is from a stretch of the desktop.
double outside(double at, int from, int length) { return std::max({from - at, at - (from + length), 0.0}); }

double distance(const drawing::Point& point, const MonitorArea& monitor) {
    return std::hypot(outside(point.x, monitor.x, monitor.width),
                      outside(point.y, monitor.y, monitor.height));
}

}  // namespace

WidgetPlace placeAt(const drawing::Point& leftTop, const drawing::Size& size,
                    const std::vector<MonitorArea>& monitors) {
    const drawing::Point middle{leftTop.x + size.width / 2, leftTop.y + size.height / 2};
    const MonitorArea& nearest = *std::min_element(
        monitors.begin(), monitors.end(),
        [&](const auto& one, const auto& other) { return distance(middle, one) < distance(middle, other); });
    const auto on = [](double at, int start) { return static_cast<int>(std::lround(at - start)); };
    return {nearest.connector, within(on(leftTop.x, nearest.x), size.width, nearest.width),
            within(on(leftTop.y, nearest.y), size.height, nearest.height)};
}

std::optional<WidgetPlace> WidgetPlaces::find(const std::string& widget,
                                              const std::vector<MonitorArea>& monitors,
                                              const drawing::Size& size) const {
    const Settings settings = Settings::read(environment_);
    const std::string last = settings.text(lastKey(widget)).value_or("");
    std::optional<WidgetPlace> found;
    for (const MonitorArea& monitor : monitors) {
        auto place = parse(monitor.connector, settings.text(key(widget, monitor.connector)));
        if (!place || (found && monitor.connector != last)) continue;
        place->x = within(place->x, size.width, monitor.width);
        place->y = within(place->y, size.height, monitor.height);
        found = place;
    }
    return found;
}

void WidgetPlaces::keep(const std::string& widget, const WidgetPlace& place) const {
    Settings::change(environment_, [&](Settings& settings) {
        settings.setText(key(widget, place.connector),
                         std::to_string(place.x) + ' ' + std::to_string(place.y));
        settings.setText(lastKey(widget), place.connector);
    });
}

std::vector<WidgetPlace> rowsOn(const MonitorArea& monitor, const std::vector<drawing::Size>& sizes) {
    constexpr double margin = 40;
    constexpr double gap = 16;
    std::vector<WidgetPlace> places;
    double x = margin;
    double y = margin;
    double below = margin;
    for (const drawing::Size& size : sizes) {
        if (x > margin && x + size.width + margin > monitor.width) {
            x = margin;
            y = below;
        }
        places.push_back({monitor.connector, within(static_cast<int>(x), size.width, monitor.width),
                          within(static_cast<int>(y), size.height, monitor.height)});
        x += size.width + gap;
        below = std::max(below, y + size.height + gap);
    }
    return places;
}

}  // namespace tappora

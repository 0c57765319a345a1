#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/common/system/environment.h"
#include "drawing/geometry.h"

namespace tappora {

/// Where a widget is: so far from the left and the top of the monitor on a connector ("eDP-1").
struct WidgetPlace {
    std::string connector;
    int x = 0;
    int y = 0;

    bool operator==(const WidgetPlace&) const = default;
};

/// A monitor as far as it matters to widgets, in pixels of the desktop.
struct MonitorArea {
    std::string connector;
    int width = 0;
    int height = 0;
    int x = 0;  ///< where its left top is on the desktop
    int y = 0;
};

/// Where a widget goes whose left top the user left at a point of the desktop: on the monitor that has
/// its middle, or else is the nearest, and wholly on it where it fits. There must be a monitor.
WidgetPlace placeAt(const drawing::Point& leftTop, const drawing::Size& size,
                    const std::vector<MonitorArea>& monitors);

/// The places that the user gave widgets, by connector, kept in the settings.
class WidgetPlaces {
  public:
    explicit WidgetPlaces(const Environment& environment) : environment_(environment) {}

    /// The widget's last place on a monitor that is there; nothing when it was never moved on one. Moved into
    /// the monitor, should it have become smaller.
    std::optional<WidgetPlace> find(const std::string& widget, const std::vector<MonitorArea>& monitors,
                                    const drawing::Size& size) const;

    /// Keeps a place as the widget's last.
    void keep(const std::string& widget, const WidgetPlace& place) const;

  private:
    const Environment& environment_;
};

/// Places for those that have none: in rows from the top left of a monitor.
std::vector<WidgetPlace> rowsOn(const MonitorArea& monitor, const std::vector<drawing::Size>& sizes);

}  // namespace tappora

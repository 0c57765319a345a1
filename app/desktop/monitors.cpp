#include "app/desktop/monitors.h"

#include <gdkmm/display.h>
#include <gdkmm/screen.h>

#include <algorithm>

#include "core/foundation/owned.h"

namespace tappora {
namespace {

/// The only question of GTK 3 that is answered by the connector's name.
std::string connector(int index) {
    G_GNUC_BEGIN_IGNORE_DEPRECATIONS
    const tapcore::Owned<char, g_free> name(
        gdk_screen_get_monitor_plug_name(gdk_screen_get_default(), index));
    G_GNUC_END_IGNORE_DEPRECATIONS
    return name ? name.get() : std::to_string(index);
}

}  // namespace

std::vector<Monitor> monitors() {
    const auto display = Gdk::Display::get_default();
    std::vector<Monitor> found;
    for (int i = 0; i < display->get_n_monitors(); ++i) {
        const auto handle = display->get_monitor(i);
        Gdk::Rectangle area;
        handle->get_geometry(area);
        found.push_back(
            {handle, {connector(i), area.get_width(), area.get_height(), area.get_x(), area.get_y()}});
    }
    std::stable_partition(found.begin(), found.end(),
                          [](const Monitor& monitor) { return monitor.handle->is_primary(); });
    return found;
}

std::vector<MonitorArea> areasOf(const std::vector<Monitor>& monitors) {
    std::vector<MonitorArea> areas;
    for (const Monitor& monitor : monitors) areas.push_back(monitor.area);
    return areas;
}

const Monitor& monitorOf(const WidgetPlace& place, const std::vector<Monitor>& monitors) {
    return *std::find_if(monitors.begin(), monitors.end(),
                         [&](const Monitor& monitor) { return monitor.area.connector == place.connector; });
}

}  // namespace tappora

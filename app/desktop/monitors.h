#pragma once

#include <gdkmm/monitor.h>

#include <vector>

#include "app/desktop/places.h"

namespace tappora {

/// A monitor that is there.
struct Monitor {
    Glib::RefPtr<Gdk::Monitor> handle;
    MonitorArea area;
};

/// All of them, the primary one first.
std::vector<Monitor> monitors();

std::vector<MonitorArea> areasOf(const std::vector<Monitor>& monitors);

/// The one that a place is on, which must be among them.
const Monitor& monitorOf(const WidgetPlace& place, const std::vector<Monitor>& monitors);

}  // namespace tappora

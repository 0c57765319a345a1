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

}  // namespace tappora

#include "app/desktop/desktop_surface.h"

#include <gdkmm/display.h>

#include <string_view>

#include "app/common/program.h"

namespace tappora {
namespace {

using MonitorPointer = Glib::RefPtr<Gdk::Monitor>;

Gdk::Rectangle areaOf(const MonitorPointer& monitor) {
    Gdk::Rectangle area;
    monitor->get_geometry(area);
    return area;
}

class X11Surface : public DesktopSurface {
  public:
    void prepare(Gtk::Window& window) const override {
        window.set_type_hint(Gdk::WINDOW_TYPE_HINT_DESKTOP);
        window.set_keep_below(true);
        window.stick();
        window.set_skip_taskbar_hint(true);
        window.set_skip_pager_hint(true);
    }

    void place(Gtk::Window& window, const MonitorPointer& monitor, int x, int y) const override {
        const Gdk::Rectangle area = areaOf(monitor);
        window.move(area.get_x() + x, area.get_y() + y);
    }
};

class PlainSurface : public DesktopSurface {
  public:
    void prepare(Gtk::Window& window) const override {
        window.set_skip_taskbar_hint(true);
        window.set_keep_below(true);
    }
    void place(Gtk::Window&, const MonitorPointer&, int, int) const override {}
    bool canPlace() const override { return false; }
};

bool isX11() {
    return std::string_view(G_OBJECT_TYPE_NAME(Gdk::Display::get_default()->gobj())) == "GdkX11Display";
}

}  // namespace

std::unique_ptr<DesktopSurface> x11Surface() { return std::make_unique<X11Surface>(); }

std::unique_ptr<DesktopSurface> plainSurface() { return std::make_unique<PlainSurface>(); }

std::unique_ptr<DesktopSurface> desktopSurface() {
    if (isX11()) return x11Surface();
    if (auto layer = layerSurface()) return layer;
    complain("widgets: this desktop has no layer-shell, so the widgets are ordinary windows");
    return plainSurface();
}

}  // namespace tappora

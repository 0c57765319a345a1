#include <gtk-layer-shell/gtk-layer-shell.h>

#include <memory>

#include "app/desktop/desktop_surface.h"

namespace tappora {
namespace {

class LayerSurface : public DesktopSurface {
  public:
    void prepare(Gtk::Window& window) const override {
        gtk_layer_init_for_window(window.gobj());
        gtk_layer_set_namespace(window.gobj(), "desktop");
        gtk_layer_set_layer(window.gobj(), GTK_LAYER_SHELL_LAYER_BOTTOM);
        gtk_layer_set_anchor(window.gobj(), GTK_LAYER_SHELL_EDGE_LEFT, TRUE);
        gtk_layer_set_anchor(window.gobj(), GTK_LAYER_SHELL_EDGE_TOP, TRUE);
        gtk_layer_set_exclusive_zone(window.gobj(), -1);
    }

    void place(Gtk::Window& window, const Glib::RefPtr<Gdk::Monitor>& monitor, int x, int y) const override {
        if (gtk_layer_get_monitor(window.gobj()) != monitor->gobj())
            gtk_layer_set_monitor(window.gobj(), monitor->gobj());
        gtk_layer_set_margin(window.gobj(), GTK_LAYER_SHELL_EDGE_LEFT, x);
        gtk_layer_set_margin(window.gobj(), GTK_LAYER_SHELL_EDGE_TOP, y);
    }

    bool hasOwnCoordinates() const override { return true; }
};

}  // namespace

std::unique_ptr<DesktopSurface> layerSurface() {
    if (!gtk_layer_is_supported()) return nullptr;
    return std::make_unique<LayerSurface>();
}

}  // namespace tappora

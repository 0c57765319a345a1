#pragma once

#include <gdkmm/monitor.h>
#include <gtkmm/window.h>

#include <memory>

namespace tappora {

/// Keeps a window on the desktop, and places it there. One for each kind of desktop.
class DesktopSurface {
  public:
    virtual ~DesktopSurface() = default;

    /// Before the window is shown for the first time.
    virtual void prepare(Gtk::Window& window) const = 0;
    /// Moves the window to `x` pixels from the left and `y` from the top of a monitor.
    virtual void place(Gtk::Window& window, const Glib::RefPtr<Gdk::Monitor>& monitor, int x,
                       int y) const = 0;
    /// False where only the desktop itself can move a window: it must do the drag.
    virtual bool canPlace() const { return true; }
    /// True where the pointer's position is known only within the window, not on the screen. A window is then
    /// moved when the drag ends, not during it.
    virtual bool hasOwnCoordinates() const { return false; }
};

/// By layer-shell, on the layer below windows, where the compositor has it; else null. Null also where this
/// program was built without it.
std::unique_ptr<DesktopSurface> layerSurface();

/// By the kind of window, on X11.
std::unique_ptr<DesktopSurface> x11Surface();

/// As an ordinary window without a frame.
std::unique_ptr<DesktopSurface> plainSurface();

/// The best of these for the display that GTK has opened. Says on standard error when that is the plain one.
std::unique_ptr<DesktopSurface> desktopSurface();

}  // namespace tappora

#pragma once

#include <gdkmm/monitor.h>
#include <gtkmm/window.h>

#include <memory>

#include "app/desktop/places.h"

namespace tappora {

/// Keeps a window on the desktop, and places it there. One for each kind of desktop.
class DesktopSurface {
  public:
    virtual ~DesktopSurface() = default;

    /// Before the window is shown for the first time.
    virtual void prepare(Gtk::Window& window) const = 0;
    /// Moves it to so far from the left and the top of a monitor.
    virtual void place(Gtk::Window& window, const Glib::RefPtr<Gdk::Monitor>& monitor, int x,
                       int y) const = 0;
    /// False where the user's own drag must be left to the desktop.
    virtual bool canPlace() const { return true; }
    /// Whether the pointer's place is known within the window alone, and not on the screen. A window is then
    /// moved at the end of a drag.
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

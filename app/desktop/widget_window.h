#pragma once

#include <gtkmm/drawingarea.h>
#include <gtkmm/window.h>

#include <functional>
#include <optional>

#include "app/desktop/desktop_surface.h"
#include "app/desktop/monitors.h"
#include "drawing/node.h"
#include "drawing/style.h"

namespace tappora {

/// A widget on the desktop: a frameless window that shows a picture and can be dragged.
class WidgetWindow : public Gtk::Window {
  public:
    /// `moved` is told the place to which the user has dragged it. The surface must outlive the window.
    WidgetWindow(const drawing::Size& points, const DesktopSurface& surface,
                 std::function<void(const WidgetPlace&)> moved);

    void show(const drawing::Picture& picture, const drawing::Appearance& appearance);
    void moveTo(const Monitor& monitor, int x, int y);

    /// How large it is on the desktop: its points times the scale that the user has set for text.
    drawing::Size desktopSize() const;

  private:
    bool draw(const Cairo::RefPtr<Cairo::Context>& context);
    bool press(GdkEventButton* event);
    bool release(GdkEventButton* event);
    bool drag(GdkEventMotion* event);
    void followPointer(double pointerX, double pointerY);
    void settle();
    void tellAssistiveTools();
    void cutToShape();

    drawing::Size points_;
    const DesktopSurface& surface_;
    std::function<void(const WidgetPlace&)> moved_;
    Gtk::DrawingArea area_;
    drawing::Picture picture_;
    drawing::Appearance appearance_;
    Monitor monitor_;
    drawing::Point place_;  ///< on the monitor
    struct Drag {
        drawing::Point pointer;  ///< where it was pressed
        drawing::Point place;    ///< of the window, then
    };
    std::optional<Drag> drag_;
};

}  // namespace tappora

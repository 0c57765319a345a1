#include "app/desktop/widget_window.h"

#include <atkmm/object.h>
#include <cairomm/context.h>
#include <cairomm/surface.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "drawing/accessibility.h"
#include "drawing/painter.h"

namespace tappora {
namespace {

using drawing::Element;
using drawing::Point;

/// The user's scale of text, by which widgets grow too: the part of the scale that is no whole number comes
/// this way on X11.
double textScale(const Glib::RefPtr<const Gdk::Screen>& screen) {
    constexpr double usual = 96;
    const double resolution = screen->get_resolution();
    return resolution > 0 ? std::clamp(resolution / usual, 0.5, 4.0) : 1;
}

/// All elements within, in one text: "Today, 13,976; …".
void appendTexts(std::string& text, const std::vector<Element>& elements) {
    for (const Element& element : elements) {
        if (!text.empty()) text += "; ";
        text += element.label;
        if (!element.value.empty()) text += ", " + element.value;
        appendTexts(text, element.children);
    }
}

}  // namespace

WidgetWindow::WidgetWindow(const drawing::Size& points, const DesktopSurface& surface,
                           std::function<void(const WidgetPlace&)> moved)
    : points_(points), surface_(surface), moved_(std::move(moved)) {
    set_decorated(false);
    set_resizable(false);
    set_accept_focus(false);
    set_app_paintable(true);
    if (const auto visual = get_screen()->get_rgba_visual())
        gtk_widget_set_visual(Gtk::Widget::gobj(), visual->gobj());
    surface_.prepare(*this);
    add(area_);
    area_.signal_draw().connect(sigc::mem_fun(*this, &WidgetWindow::draw));
    add_events(Gdk::BUTTON_PRESS_MASK | Gdk::BUTTON_RELEASE_MASK | Gdk::BUTTON1_MOTION_MASK);
    signal_button_press_event().connect(sigc::mem_fun(*this, &WidgetWindow::press));
    signal_button_release_event().connect(sigc::mem_fun(*this, &WidgetWindow::release));
    signal_motion_notify_event().connect(sigc::mem_fun(*this, &WidgetWindow::drag));
    signal_size_allocate().connect([this](Gtk::Allocation&) { cutToShape(); });
}

drawing::Size WidgetWindow::desktopSize() const {
    const double scale = textScale(get_screen());
    return {points_.width * scale, points_.height * scale};
}

void WidgetWindow::show(const drawing::Picture& picture, const drawing::Appearance& appearance) {
    picture_ = picture;
    appearance_ = appearance;
    const drawing::Size size = desktopSize();
    area_.set_size_request(static_cast<int>(std::ceil(size.width)), static_cast<int>(std::ceil(size.height)));
    area_.queue_draw();
    tellAssistiveTools();
    show_all();
}

void WidgetWindow::moveTo(const Monitor& monitor, int x, int y) {
    monitor_ = monitor;
    place_ = {static_cast<double>(x), static_cast<double>(y)};
    surface_.place(*this, monitor.handle, x, y);
}

bool WidgetWindow::draw(const Cairo::RefPtr<Cairo::Context>& context) {
    context->set_operator(Cairo::OPERATOR_CLEAR);
    context->paint();
    context->set_operator(Cairo::OPERATOR_OVER);
    // A desktop that gives less room than was asked for still has the whole widget.
    const double scale =
        std::min(area_.get_allocated_width() / points_.width, area_.get_allocated_height() / points_.height);
    context->scale(scale, scale);
    drawing::paint(context->cobj(), picture_, appearance_);
    return true;
}

/// Where there is no transparency, what is outside the round corners is no part of the window.
void WidgetWindow::cutToShape() {
    if (!get_realized() || get_screen()->is_composited()) return;
    const auto mask =
        Cairo::ImageSurface::create(Cairo::FORMAT_A1, get_allocated_width(), get_allocated_height());
    draw(Cairo::Context::create(mask));
    cairo_region_t* const region = gdk_cairo_region_create_from_surface(mask->cobj());
    gtk_widget_shape_combine_region(Gtk::Widget::gobj(), region);
    cairo_region_destroy(region);
}

void WidgetWindow::tellAssistiveTools() {
    const std::vector<Element> elements = drawing::elementsOf(picture_.content);
    if (elements.empty()) return;
    std::string values;
    appendTexts(values, elements.front().children);
    set_title(elements.front().label);
    const auto accessible = area_.get_accessible();
    accessible->set_role(Atk::ROLE_IMAGE);
    accessible->set_name(elements.front().label);
    accessible->set_description(values);
}

bool WidgetWindow::press(GdkEventButton* event) {
    if (event->button != 1) return false;
    if (!surface_.canPlace()) {
        begin_move_drag(1, static_cast<int>(event->x_root), static_cast<int>(event->y_root), event->time);
        return true;
    }
    const bool isOwn = surface_.hasOwnCoordinates();
    drag_ = {{isOwn ? event->x : event->x_root, isOwn ? event->y : event->y_root}, place_};
    return true;
}

bool WidgetWindow::drag(GdkEventMotion* event) {
    if (!drag_ || !monitor_.handle) return false;
    // Compositors differ in whether the pointer's place within a window follows one that moves meanwhile.
    if (!surface_.hasOwnCoordinates()) followPointer(event->x_root, event->y_root);
    return true;
}

void WidgetWindow::followPointer(double pointerX, double pointerY) {
    const double x = drag_->place.x + pointerX - drag_->pointer.x;
    const double y = drag_->place.y + pointerY - drag_->pointer.y;
    moveTo(monitor_, static_cast<int>(std::lround(x)), static_cast<int>(std::lround(y)));
}

/// Moves it wholly onto the monitor to which it was dragged.
void WidgetWindow::settle() {
    const std::vector<Monitor> there = monitors();
    if (there.empty()) return;
    const Point leftTop{monitor_.area.x + place_.x, monitor_.area.y + place_.y};
    const WidgetPlace place = placeAt(leftTop, desktopSize(), areasOf(there));
    moveTo(monitorOf(place, there), place.x, place.y);
    moved_(place);
}

bool WidgetWindow::release(GdkEventButton* event) {
    if (event->button != 1 || !drag_ || !monitor_.handle) return false;
    const bool isOwn = surface_.hasOwnCoordinates();
    followPointer(isOwn ? event->x : event->x_root, isOwn ? event->y : event->y_root);
    const bool hasMoved = drag_->place != place_;
    drag_.reset();
    if (hasMoved) settle();
    return true;
}

}  // namespace tappora

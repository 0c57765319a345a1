#pragma once

#include <giomm/dbusproxy.h>
#include <gtkmm/settings.h>

#include <functional>
#include <optional>

#include "drawing/style.h"

namespace tappora {

/// Whether the desktop is light or dark: what the settings portal says
/// (org.freedesktop.appearance color-scheme), else what GTK's own settings prefer.
class ColourScheme {
  public:
    /// `changed` is called when it changes, and when the portal has first answered.
    explicit ColourScheme(std::function<void()> changed);

    drawing::Theme theme() const;

  private:
    void meetPortal(Glib::RefPtr<Gio::AsyncResult>& result);
    void take(const Glib::VariantBase& value);
    void takeChange(Glib::VariantContainerBase& change);
    void ask();

    std::function<void()> changed_;
    std::optional<guint32> preference_;  ///< the portal's: 0 none, 1 dark, 2 light
    Glib::RefPtr<Gio::DBus::Proxy> portal_;
    Glib::RefPtr<Gtk::Settings> settings_;
};

}  // namespace tappora

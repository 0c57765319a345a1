#include "app/desktop/colour_scheme.h"

#include <giomm/error.h>

#include <utility>

namespace tappora {
namespace {

constexpr const char* space = "org.freedesktop.appearance";
constexpr const char* key = "color-scheme";

using Glib::Variant;
using Glib::VariantBase;

/// What is in a box of boxes.
VariantBase unboxed(VariantBase value) {
    while (value.gobj() && value.get_type_string() == "v")
        value = VariantBase(g_variant_get_variant(value.gobj()));
    return value;
}

bool isDarkByName(const Glib::ustring& theme) {
    const std::string& name = theme.raw();
    return name.ends_with("-dark") || name.ends_with("-Dark") || name.ends_with(":dark");
}

}  // namespace

ColourScheme::ColourScheme(std::function<void()> changed)
    : changed_(std::move(changed)), settings_(Gtk::Settings::get_default()) {
    settings_->property_gtk_application_prefer_dark_theme().signal_changed().connect([this] { changed_(); });
    settings_->property_gtk_theme_name().signal_changed().connect([this] { changed_(); });
    Gio::DBus::Proxy::create_for_bus(Gio::DBus::BUS_TYPE_SESSION, "org.freedesktop.portal.Desktop",
                                     "/org/freedesktop/portal/desktop", "org.freedesktop.portal.Settings",
                                     [this](Glib::RefPtr<Gio::AsyncResult>& result) { meetPortal(result); });
}

/// Listens to the portal once it is there, and asks what holds now.
void ColourScheme::meetPortal(Glib::RefPtr<Gio::AsyncResult>& result) {
    try {
        portal_ = Gio::DBus::Proxy::create_for_bus_finish(result);
    } catch (const Glib::Error&) {  // no session bus
        return;
    }
    portal_->signal_signal().connect(
        [this](const Glib::ustring&, const Glib::ustring& name, Glib::VariantContainerBase values) {
            if (name == "SettingChanged") takeChange(values);
        });
    ask();
}

drawing::Theme ColourScheme::theme() const {
    const guint32 preference = preference_.value_or(0);
    const bool isDark = preference == 0 ? settings_->property_gtk_application_prefer_dark_theme() ||
                                              isDarkByName(settings_->property_gtk_theme_name())
                                        : preference == 1;
    return isDark ? drawing::Theme::dark : drawing::Theme::light;
}

void ColourScheme::ask() {
    const auto question = Glib::VariantContainerBase::create_tuple(
        {Variant<Glib::ustring>::create(space), Variant<Glib::ustring>::create(key)});
    portal_->call(
        "Read",
        [this](Glib::RefPtr<Gio::AsyncResult>& result) {
            try {
                take(portal_->call_finish(result).get_child(0));
            } catch (const Glib::Error&) {
                // No portal: GTK's settings go.
            }
        },
        question);
}

/// Of a space, a key and a value.
void ColourScheme::takeChange(Glib::VariantContainerBase& change) {
    if (change.get_type_string() != "(ssv)") return;
    const auto text = [&](gsize index) {
        return VariantBase::cast_dynamic<Variant<Glib::ustring>>(change.get_child(index)).get();
    };
    if (text(0) == space && text(1) == key) take(change.get_child(2));
}

void ColourScheme::take(const VariantBase& value) {
    const VariantBase plain = unboxed(value);
    if (!plain.gobj() || plain.get_type_string() != "u") return;
    preference_ = g_variant_get_uint32(const_cast<GVariant*>(plain.gobj()));
    changed_();
}

}  // namespace tappora

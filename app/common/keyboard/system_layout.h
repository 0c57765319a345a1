#pragma once

#include <functional>
#include <optional>
#include <string>

#include "app/common/keyboard/compiled_keymap.h"
#include "app/common/keyboard/xkb_setting.h"
#include "app/common/system/environment.h"
#include "core/keyboard/catalog.h"

namespace tappora {

/// Where the system's keyboard setting is looked for, handed in so that tests can hand in texts.
struct SystemSources {
    std::function<std::optional<std::string>(const std::string& name)> variable;
    std::function<std::string(const std::string& path)> file;  ///< its text; "" when it is missing
    std::function<std::string(const std::string& command)>
        output;  ///< what a command prints; "" when it fails
};

/// The real ones.
SystemSources systemSources(const Environment& environment);

/// The keyboard layout that the system is set to: by XKB_DEFAULT_LAYOUT, the desktop's own setting (GNOME's,
/// KDE's), what an X server has in force, Xorg's configuration, /etc/default/keyboard or /etc/vconsole.conf.
/// Under Wayland, where the X server is a guest that may know better or not, it is asked last.
std::optional<XkbLayout> systemKeyboard(const SystemSources& sources);

/// The layout that "auto" means: the bundled one that prints the same on all 47 typing keys as the
/// system types on them; else one made of what the system types, with the id "system", on the bundled one
/// that has most keys in common with it. Nothing when the system's data has no such layout.
std::optional<tapcore::Layout> systemLayout(const XkbLayout& keyboard, IsoKeys isoKeys,
                                            const tapcore::Catalog& bundled);

}  // namespace tappora

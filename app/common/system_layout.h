#pragma once

#include <functional>
#include <optional>
#include <string>

#include "app/common/program.h"
#include "app/common/xkb_setting.h"

namespace tappora {

/// Where the system's keyboard setting is looked for, handed in so that tests can hand in texts.
struct SystemSources {
    std::function<std::optional<std::string>(const std::string& name)> variable;
    std::function<std::string(const std::string& path)> file;  ///< its text; "" when there is none
    std::function<std::string(const std::string& command)>
        output;  ///< what a command prints; "" when it fails
};

/// The real ones.
SystemSources systemSources(const Environment& environment);

/// The keyboard layout that the system is set to: by XKB_DEFAULT_LAYOUT, the desktop's own setting (GNOME's,
/// KDE's), what an X server has in force, Xorg's configuration, /etc/default/keyboard or /etc/vconsole.conf.
/// Under Wayland, where the X server is a guest that may know better or not, it is asked last.
std::optional<XkbLayout> systemKeyboard(const SystemSources& sources);

/// The macOS input source that has the same legends ("com.apple.keylayout.German" for "de"), or nothing.
std::optional<std::string> inputSource(const XkbLayout& keyboard);

/// The id of our layout that "auto" stands for, or nothing when the system's is none of ours.
std::optional<std::string> layoutID(const XkbLayout& keyboard);
std::optional<std::string> systemLayoutID(const Environment& environment);

}  // namespace tappora

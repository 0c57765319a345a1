#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tappora {

/// A keyboard layout as X and Wayland name it: "us" with the variant "dvorak", "de" with none.
struct XkbLayout {
    std::string layout;
    std::string variant = {};

    bool operator==(const XkbLayout&) const = default;
};

// The places in which systems keep the setting. Of several layouts the first is the one that counts; nothing
// when there is none.

/// From lists as XKB itself takes them: "us,ru" and "dvorak,".
std::optional<XkbLayout> firstXkbLayout(std::string_view layouts, std::string_view variants);

/// A text of lines NAME=VALUE, quoted or not, with these names: shell settings such as /etc/default/keyboard,
/// and KDE's kxkbrc.
std::optional<XkbLayout> xkbFromAssignments(std::string_view text, std::string_view layoutName,
                                            std::string_view variantName);

/// Xorg's configuration (lines `Option "XkbLayout" "de"`), which `localectl set-x11-keymap` writes.
std::optional<XkbLayout> xkbFromXorg(std::string_view text);

/// What `setxkbmap -query` prints ("layout:     us").
std::optional<XkbLayout> xkbFromQuery(std::string_view text);

/// GNOME's list of input sources, as `gsettings` prints it: "[('xkb', 'us+dvorak'), ('ibus', 'mozc-jp')]".
std::optional<XkbLayout> xkbFromInputSources(std::string_view text);

}  // namespace tappora

#include "app/common/system_layout.h"

#include <gtest/gtest.h>

#include <map>

namespace tappora {
namespace {

using Texts = std::map<std::string, std::string>;

/// A system that has these texts: by variable ("$HOME"), file, or command.
SystemSources systemWith(const Texts& texts) {
    const auto text = [texts](const std::string& name) {
        const auto found = texts.find(name);
        return found == texts.end() ? "" : found->second;
    };
    return {.variable = [text](const std::string& name) { return std::optional(text("$" + name)); },
            .file = text,
            .output = text};
}

std::string found(const Texts& texts) {
    const auto keyboard = systemKeyboard(systemWith(texts));
    return keyboard ? keyboard->layout + "/" + keyboard->variant : "none";
}

TEST(SystemLayout, IsFoundWhereEachSystemKeepsIt) {
    const std::string gsettings = "gsettings get org.gnome.desktop.input-sources sources";
    const std::string xorg = "/etc/X11/xorg.conf.d/00-keyboard.conf";
    const struct {
        std::string keyboard;
        Texts texts;
    } cases[] = {
        {"us/dvorak", {{"$XKB_DEFAULT_LAYOUT", "us,de"}, {"$XKB_DEFAULT_VARIANT", "dvorak,neo"}}},
        {"us/dvorak", {{"$XKB_DEFAULT_LAYOUT", "us(dvorak)"}}},
        {"de/neo",
         {{"$XDG_CURRENT_DESKTOP", "ubuntu:GNOME"},
          {gsettings, "[('ibus', 'mozc-jp'), ('xkb', 'de+neo'), ('xkb', 'us')]\n"}}},
        {"fr/",
         {{"$XDG_CURRENT_DESKTOP", "KDE"},
          {"$HOME", "/home/mo"},
          {"/home/mo/.config/kxkbrc", "[Layout]\nLayoutList=fr,us\nUse=true\nVariantList=,dvorak\n"}}},
        {"fr/bepo",
         {{"$XDG_CURRENT_DESKTOP", "KDE"},
          {"$XDG_CONFIG_HOME", "/c"},
          {"/c/kxkbrc", "[Layout]\nUse=true\nLayoutList=fr\nVariantList=bepo"}}},
        {"es/cat",
         {{xorg,
           "Section \"InputClass\"\n        Option \"XkbLayout\" \"es,us\"\n        Option \"XkbVariant\" "
           "\"cat,\"\n"
           "EndSection\n"}}},
        {"ua/winkeys",
         {{"/etc/default/keyboard",
           "# KEYBOARD CONFIGURATION FILE\n#XKBLAYOUT=\"us\"\nXKBMODEL=\"pc105\"\nXKBLAYOUT=\"ua,us\"\n"
           "XKBVARIANT=\"winkeys,\"\n"}}},
        {"de/",
         {{"/etc/default/keyboard", "XKBLAYOUT=\nXKBVARIANT=\n"}, {"/etc/vconsole.conf", "XKBLAYOUT=de\n"}}},
        {"ru/phonetic",
         {{"$DISPLAY", ":0"},
          {"setxkbmap -query",
           "rules:      evdev\nmodel:      pc105\nlayout:     ru,us\nvariant:    phonetic,\n"}}},
        {"fr/oss",  // what is in force, not what the machine started with
         {{"$DISPLAY", ":0"},
          {"setxkbmap -query", "layout:     fr\nvariant:    oss\n"},
          {"/etc/default/keyboard", "XKBLAYOUT=de"}}},
        {"de/",
         {{"$DISPLAY", ":0"},
          {"$WAYLAND_DISPLAY", "wayland-0"},
          {"setxkbmap -query", "layout:     us\n"},
          {"/etc/default/keyboard", "XKBLAYOUT=de # at home\nXKBVARIANT=# none\n"}}},
        {"gb/extd", {{"/etc/vconsole.conf", "XKBLAYOUT='gb'  # \"us\"\nXKBVARIANT=\"extd\"#\n"}}},
        {"none", {{"setxkbmap -query", "layout:     us\n"}}},
        {"none", {{"$XDG_CURRENT_DESKTOP", "GNOME"}, {gsettings, "@a(ss) []\n"}}},
    };
    for (const auto& [keyboard, texts] : cases) EXPECT_EQ(found(texts), keyboard);
}

TEST(SystemLayout, HasTheLayoutWithTheSameLegends) {
    const struct {
        XkbLayout keyboard;
        std::string inputSource, layoutID;
    } cases[] = {
        {{"us"}, "com.apple.keylayout.US", "qwerty"},
        {{"us", "intl"}, "com.apple.keylayout.US", "qwerty"},
        {{"us", "dvorak-intl"}, "com.apple.keylayout.Dvorak", "dvorak"},
        {{"us", "dvorak-l"}, "com.apple.keylayout.Dvorak-Left", "none"},
        {{"us", "colemak_dh"}, "com.apple.keylayout.Colemak-DH", "colemak-dh"},
        {{"us", "colemak_dh_ortho"}, "com.apple.keylayout.Colemak-DH-Ortho", "colemak-dh-matrix"},
        {{"us", "workman"}, "com.apple.keylayout.Workman", "workman"},
        {{"us", "symbolic"}, "none", "none"},
        {{"gb"}, "com.apple.keylayout.British", "none"},
        {{"de", "nodeadkeys"}, "com.apple.keylayout.German", "qwertz"},
        {{"de", "neo"}, "none", "neo2"},
        {{"de", "us"}, "none", "none"},
        {{"at"}, "com.apple.keylayout.German", "qwertz"},
        {{"fr", "oss"}, "com.apple.keylayout.French", "azerty"},
        {{"fr", "bepo_afnor"}, "none", "bepo"},
        {{"es"}, "com.apple.keylayout.Spanish-ISO", "spanish"},
        {{"ru"}, "com.apple.keylayout.RussianWin", "russian"},
        {{"ru", "phonetic"}, "none", "none"},
        {{"ua", "macOS"}, "com.apple.keylayout.Ukrainian-PC", "ukrainian"},
        {{"jp"}, "none", "none"},
    };
    for (const auto& [keyboard, source, id] : cases) {
        EXPECT_EQ(inputSource(keyboard).value_or("none"), source) << keyboard.layout << keyboard.variant;
        EXPECT_EQ(layoutID(keyboard).value_or("none"), id) << keyboard.layout << keyboard.variant;
    }
}

}  // namespace
}  // namespace tappora

#include "app/common/keyboard/system_layout.h"

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
        {"fr/bepo",
         {{"$XDG_CURRENT_DESKTOP", "KDE"},
          {"$XDG_CONFIG_HOME", "c"},  // relative, and so ignored
          {"$HOME", "/home/mo"},
          {"c/kxkbrc", "[Layout]\nUse=true\nLayoutList=us\n"},
          {"/home/mo/.config/kxkbrc", "[Layout]\nUse=true\nLayoutList=fr\nVariantList=bepo"}}},
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

TEST(SystemLayout, IsABundledOneOnlyWhereAllTypingKeysAgree) {
    const auto bundled = tapcore::Catalog::bundled(RESOURCES);
    const struct {
        XkbLayout keyboard;
        IsoKeys isoKeys;
        std::string layout;  ///< its id, or "system" with the id of its base
        tapcore::Legends legends = {};
    } cases[] = {
        {{"us"}, IsoKeys::absent, "qwerty"},
        {{"us", "mac"}, IsoKeys::absent, "qwerty"},
        {{"us"}, IsoKeys::present, "system qwerty", {{10, {"`", "~"}}, {50, {"<", ">"}}}},
        {{"us", "intl"}, IsoKeys::absent, "system qwerty", {{39, {"´", "¨"}}, {50, {"`", "~"}}}},
        {{"us", "dvorak"}, IsoKeys::absent, "dvorak"},
        {{"us", "dvp"}, IsoKeys::absent, "system dvorak", {{18, {"&", "%"}}, {19, {"[", "7"}}}},
        {{"us", "dvorak-classic"}, IsoKeys::absent, "system dvorak", {{18, {"[", "{"}}}},
        {{"us", "colemak_dh"}, IsoKeys::absent, "colemak-dh"},
        {{"us", "workman"}, IsoKeys::absent, "workman"},
        {{"gb"}, IsoKeys::absent, "system qwerty", {{20, {"3", "£"}}, {42, {"#", "~"}}, {10, {"\\", "|"}}}},
        {{"gb", "dvorakukp"}, IsoKeys::absent, "system dvorak", {{20, {"3", "£"}}}},
        {{"de"}, IsoKeys::present, "qwertz"},
        {{"de", "nodeadkeys"}, IsoKeys::present, "qwertz"},
        {{"at"}, IsoKeys::present, "qwertz"},
        {{"de"}, IsoKeys::absent, "system qwertz", {{50, {"^", "°"}}, {10, {"<", ">"}}}},
        {{"de", "neo"}, IsoKeys::present, "neo2"},
        {{"fr"}, IsoKeys::present, "system azerty", {{12, {"a", "A"}}, {27, {")", "°"}}, {44, {"!", "§"}}}},
        {{"fr", "bepo"}, IsoKeys::present, "bepo"},
        {{"es"}, IsoKeys::present, "spanish"},
        {{"ru"}, IsoKeys::absent, "system russian", {{44, {".", ","}}, {50, {"ё", "Ё"}}}},
        {{"ru", "typewriter"}, IsoKeys::absent, "system russian", {{18, {"№", "1"}}}},
        {{"ua", "macOS"}, IsoKeys::absent, "system ukrainian", {{1, {"и", "И"}}, {11, {"і", "І"}}}},
        {{"vn", "us"}, IsoKeys::absent, "system qwerty", {{47, {"\u0323", ">"}}, {44, {"\u0309", "?"}}}},
        {{"jp"}, IsoKeys::present, "system qwerty", {{24, {"^", "~"}}, {93, {"\\", "|"}}}},
    };
    for (const auto& [keyboard, isoKeys, expected, legends] : cases) {
        const auto layout = systemLayout(keyboard, isoKeys, bundled);
        const std::string name = keyboard.layout + "(" + keyboard.variant + ")";
        ASSERT_TRUE(layout) << name;
        EXPECT_EQ(layout->id == "system" ? "system " + layout->base.value_or("") : layout->id, expected)
            << name;
        for (const auto& [code, legend] : legends)
            EXPECT_EQ(layout->legends.at(code), legend) << name << code;
    }
    EXPECT_EQ(systemLayout({"us", "intl"}, IsoKeys::absent, bundled)->name,
              "System: English (US, intl., with dead keys)");
    for (const char* unknown : {"none", "zz", "../us"})
        EXPECT_EQ(systemLayout({unknown}, IsoKeys::absent, bundled), std::nullopt) << unknown;
}

}  // namespace
}  // namespace tappora

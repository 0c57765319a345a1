#include "app/common/system_layout.h"

#include <array>
#include <cstdio>
#include <memory>
#include <string_view>

#include "core/foundation/file_io.h"
#include "core/keyboard/input_source_layout.h"

namespace tappora {
namespace {

/// XKB's names of a layout, and what has the same legends.
struct Counterpart {
    std::string_view layout;
    std::string_view variants;  ///< separated by spaces; "-" is the layout without one
    std::string_view name;
};

constexpr Counterpart inputSources[] = {
    {"us", "- alt-intl altgr-intl euro haw hbs intl mac olpc2", "com.apple.keylayout.US"},
    {"us", "dvorak dvorak-alt-intl dvorak-classic dvorak-intl dvorak-mac dvp", "com.apple.keylayout.Dvorak"},
    {"us", "dvorak-l", "com.apple.keylayout.Dvorak-Left"},
    {"us", "dvorak-r", "com.apple.keylayout.Dvorak-Right"},
    {"us", "colemak", "com.apple.keylayout.Colemak"},
    {"us", "colemak_dh colemak_dh_iso colemak_dh_wide colemak_dh_wide_iso", "com.apple.keylayout.Colemak-DH"},
    {"us", "colemak_dh_ortho", "com.apple.keylayout.Colemak-DH-Ortho"},
    {"us", "workman workman-intl", "com.apple.keylayout.Workman"},
    {"gb", "- extd intl mac mac_intl", "com.apple.keylayout.British"},
    {"gb", "dvorak dvorakukp", "com.apple.keylayout.Dvorak"},
    {"gb", "colemak", "com.apple.keylayout.Colemak"},
    {"gb", "colemak_dh", "com.apple.keylayout.Colemak-DH"},
    {"de", "- T3 deadacute deadgraveacute deadtilde e1 e2 mac mac_nodeadkeys nodeadkeys",
     "com.apple.keylayout.German"},
    {"at", "- mac nodeadkeys", "com.apple.keylayout.German"},
    {"fr", "- azerty latin9 latin9_nodeadkeys mac nodeadkeys oss oss_latin9 oss_nodeadkeys",
     "com.apple.keylayout.French"},
    {"es", "- ast cat deadtilde mac nodeadkeys winkeys", "com.apple.keylayout.Spanish-ISO"},
    {"ru", "- dos legacy os_legacy os_winkeys typewriter typewriter-legacy winkeys",
     "com.apple.keylayout.RussianWin"},
    {"ru", "mac", "com.apple.keylayout.Russian"},
    {"ua", "- legacy macOS typewriter winkeys", "com.apple.keylayout.Ukrainian-PC"},
};

/// Layouts that macOS has no input source for.
constexpr Counterpart ownLayouts[] = {
    {"fr", "bepo bepo_afnor bepo_latin9", "bepo"},
    {"de", "neo", "neo2"},
};

bool hasWord(std::string_view words, std::string_view word) {
    const auto surrounded = " " + std::string(words) + " ";
    return surrounded.find(" " + std::string(word) + " ") != std::string::npos;
}

template <std::size_t count>
std::optional<std::string> find(const Counterpart (&counterparts)[count], const XkbLayout& keyboard) {
    const std::string_view variant = keyboard.variant.empty() ? "-" : std::string_view(keyboard.variant);
    for (const Counterpart& known : counterparts)
        if (known.layout == keyboard.layout && hasWord(known.variants, variant))
            return std::string(known.name);
    return std::nullopt;
}

std::string outputOf(const std::string& command) {
    const auto close = [](std::FILE* pipe) { pclose(pipe); };
    const std::unique_ptr<std::FILE, decltype(close)> pipe(popen((command + " 2>/dev/null").c_str(), "r"),
                                                           close);
    std::string text;
    std::array<char, 4096> block{};
    while (pipe) {
        const std::size_t size = std::fread(block.data(), 1, block.size(), pipe.get());
        if (size == 0) break;
        text.append(block.data(), size);
    }
    return text;
}

std::string valueOr(const std::optional<std::string>& value) { return value.value_or(""); }

std::optional<XkbLayout> desktopKeyboard(const SystemSources& sources) {
    const std::string desktop = valueOr(sources.variable("XDG_CURRENT_DESKTOP"));
    if (desktop.find("GNOME") != std::string::npos)
        return xkbFromInputSources(sources.output("gsettings get org.gnome.desktop.input-sources sources"));
    if (desktop.find("KDE") == std::string::npos) return std::nullopt;
    const std::string settings = valueOr(sources.variable("XDG_CONFIG_HOME"));
    const std::string folder = settings.empty() ? valueOr(sources.variable("HOME")) + "/.config" : settings;
    const auto chosen = sources.file(folder + "/kxkbrc");
    // Plasma leaves the machine's own setting alone unless told to use its list.
    if (valueOr(chosen).find("\nUse=true") == std::string::npos) return std::nullopt;
    return xkbFromAssignments(chosen, "LayoutList", "VariantList");
}

std::optional<XkbLayout> machineKeyboard(const SystemSources& sources) {
    if (auto found = xkbFromXorg(sources.file("/etc/X11/xorg.conf.d/00-keyboard.conf"))) return found;
    for (const char* file : {"/etc/default/keyboard", "/etc/vconsole.conf"})
        if (auto found = xkbFromAssignments(sources.file(file), "XKBLAYOUT", "XKBVARIANT")) return found;
    return std::nullopt;
}

}  // namespace

SystemSources systemSources(const Environment& environment) {
    return {.variable = environment.variable,
            .file = [](const std::string& path) { return tapcore::readFile(path).text; },
            .output = outputOf};
}

std::optional<XkbLayout> systemKeyboard(const SystemSources& sources) {
    if (auto found = firstXkbLayout(valueOr(sources.variable("XKB_DEFAULT_LAYOUT")),
                                    valueOr(sources.variable("XKB_DEFAULT_VARIANT"))))
        return found;
    if (auto found = desktopKeyboard(sources)) return found;
    const bool hasX = !valueOr(sources.variable("DISPLAY")).empty();
    const bool hasWayland = !valueOr(sources.variable("WAYLAND_DISPLAY")).empty();
    const auto askX = [&] { return xkbFromQuery(sources.output("setxkbmap -query")); };
    if (hasX && !hasWayland)
        if (auto found = askX()) return found;
    if (auto found = machineKeyboard(sources)) return found;
    return hasX && hasWayland ? askX() : std::nullopt;
}

std::optional<std::string> inputSource(const XkbLayout& keyboard) { return find(inputSources, keyboard); }

std::optional<std::string> layoutID(const XkbLayout& keyboard) {
    if (auto own = find(ownLayouts, keyboard)) return own;
    const auto source = inputSource(keyboard);
    const auto id = source ? tapcore::InputSourceLayout::layoutID(*source) : std::nullopt;
    return id ? std::optional(std::string(*id)) : std::nullopt;
}

std::optional<std::string> systemLayoutID(const Environment& environment) {
    const auto keyboard = systemKeyboard(systemSources(environment));
    return keyboard ? layoutID(*keyboard) : std::nullopt;
}

}  // namespace tappora

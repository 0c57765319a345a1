#include "app/common/keyboard/system_layout.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <set>
#include <string_view>
#include <utility>

#include "app/common/system/directories.h"
#include "app/common/system/environment.h"
#include "core/foundation/characters.h"
#include "core/foundation/file_io.h"
#include "core/foundation/owned.h"

namespace tappora {
namespace {

using tapcore::Layout;

constexpr const char* madeID = "system";
constexpr std::string_view first = "qwerty";  ///< of bundled layouts that are equally near

/// Whether a key prints the same: the same characters, or a name ("mod 3") where the system types none.
bool agrees(tapcore::KeyCode code, const tapcore::Legends& legends, const tapcore::Legends& system) {
    const auto ours = legends.find(code);
    const auto theirs = system.find(code);
    if (ours == legends.end() || ours->second.empty()) return theirs == system.end();
    if (theirs == system.end()) return !tapcore::isSingleCharacter(ours->second[0]);
    return ours->second == theirs->second;
}

std::size_t agreeing(const tapcore::Legends& legends, const tapcore::Legends& system,
                     const std::set<tapcore::KeyCode>& codes) {
    return static_cast<std::size_t>(std::count_if(
        codes.begin(), codes.end(), [&](tapcore::KeyCode code) { return agrees(code, legends, system); }));
}

std::string outputOf(const std::string& command) {
    const tapcore::Owned<std::FILE, ::pclose> pipe(::popen((command + " 2>/dev/null").c_str(), "r"));
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
    const auto folder = configDirectory(sources.variable);
    const std::string chosen = folder ? sources.file(*folder / "kxkbrc") : "";
    // Plasma leaves the machine's own setting alone unless told to use its list.
    if (chosen.find("\nUse=true") == std::string::npos) return std::nullopt;
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

std::optional<Layout> systemLayout(const XkbLayout& keyboard, IsoKeys isoKeys,
                                   const tapcore::Catalog& bundled) {
    auto keymap = compiledKeymap(keyboard, isoKeys);
    if (!keymap) return std::nullopt;
    const auto codes = typingCodes(isoKeys);
    const Layout* nearest = nullptr;
    std::size_t most = 0;
    for (const Layout& layout : bundled.layouts) {
        const std::size_t same = agreeing(bundled.legends(layout.id), keymap->legends, codes);
        if (same == codes.size()) return layout;
        if (nearest && (same < most || (same == most && layout.id != first))) continue;
        nearest = &layout;
        most = same;
    }
    return Layout{.id = madeID,
                  .name = "System: " + keymap->name,
                  .base = nearest ? std::optional(nearest->id) : std::nullopt,
                  .legends = std::move(keymap->legends)};
}

}  // namespace tappora

#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tapcore {

/// What a layout prints on its keys: for a key code its legends, unshifted first, then shifted.
using Legends = std::map<std::uint16_t, std::vector<std::string>>;

/// What is shown on a key.
namespace KeyFace {

/// The glyphs of the keys that are known by name.
inline constexpr std::array<std::pair<std::string_view, std::string_view>, 13> glyphs = {{
    {"tab", "⇥"},
    {"caps lock", "⇪"},
    {"shift", "⇧"},
    {"control", "⌃"},
    {"option", "⌥"},
    {"command", "⌘"},
    {"return", "⏎"},
    {"delete", "⌫"},
    {"enter", "⌤"},
    {"clear", "⌧"},
    {"menu", "≣"},
    {"help", "?"},
    {"space", ""},
}};

/// The glyph of a key known by name ("return" is "⏎"; "space" is ""), or nothing.
std::optional<std::string_view> glyph(std::string_view name);

/// The lines printed on a key cap with these legends (unshifted first): the shifted one above the other, and
/// a letter once, as its capital.
std::vector<std::string> lines(const std::vector<std::string>& legend);

/// What a key shows on a drawn board: the user's own label when there is one, else a letter or a number,
/// else, with `named`, punctuation and names; nothing for the rest.
std::vector<std::string> shown(const std::vector<std::string>& legend,
                               const std::optional<std::string>& label, bool named);

}  // namespace KeyFace

}  // namespace tapcore

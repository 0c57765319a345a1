#include "core/keyboard/input_source_layout.h"

#include <array>
#include <string>
#include <utility>

#include "core/foundation/characters.h"

namespace tapcore::InputSourceLayout {
namespace {

struct Ending {
    std::string_view ending, layoutID;
};

constexpr std::array<Ending, 2> english = {{{".us", "qwerty"}, {".abc", "qwerty"}}};

constexpr std::array<Ending, 13> national = {{
    {".russian-pc", "russian"},
    {".russian", "russian"},
    {".russianwin", "russian"},
    {".ukrainian-pc", "ukrainian"},
    {".ukrainian", "ukrainian"},
    {".spanish-iso", "spanish"},
    {".spanish", "spanish"},
    {".german", "qwertz"},
    {".german-din", "qwertz"},
    {".abc-qwertz", "qwertz"},
    {".french", "azerty"},
    {".french-numerical", "azerty"},
    {".abc-azerty", "azerty"},
}};

bool has(std::string_view text, std::string_view part) { return text.find(part) != std::string_view::npos; }

std::optional<std::string_view> byEnding(std::string_view name, const auto& endings) {
    for (const Ending& known : endings)
        if (name.ends_with(known.ending)) return known.layoutID;
    return std::nullopt;
}

std::string_view colemak(std::string_view name) {
    if (!has(name, "dh")) return "colemak";
    return has(name, "matrix") || has(name, "ortho") ? "colemak-dh-matrix" : "colemak-dh";
}

/// The one-handed variants have no layout.
std::optional<std::string_view> dvorak(std::string_view name) {
    if (has(name, "left") || has(name, "right")) return std::nullopt;
    return "dvorak";
}

}  // namespace

std::optional<std::string_view> layoutID(std::string_view inputSource) {
    const std::string name = lowercased(inputSource);
    if (has(name, "colemak")) return colemak(name);
    if (has(name, "dvorak")) return dvorak(name);
    if (const auto layout = byEnding(name, english)) return layout;
    if (has(name, "workman")) return "workman";
    return byEnding(name, national);
}

}  // namespace tapcore::InputSourceLayout

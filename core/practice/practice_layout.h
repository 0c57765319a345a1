#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/counting/key_face.h"
#include "core/counting/tally.h"

namespace tapcore {

/// Which layout a lesson is typed on. A layout types a language when each of the language's letters is on one
/// of its keys.
namespace PracticeLayout {

/// The setting that means the layout the user's keyboard has anyway.
inline constexpr std::string_view own = "own";

using LayoutByLanguage = std::map<std::string, std::string>;  ///< a layout id for each language that has one
using LegendsByLayout = std::map<std::string, Legends>;  ///< the legends of a layout, its bases' included

/// The settings with one more choice: a layout for a language. `own` removes its choice.
LayoutByLanguage setting(const std::string& layout, const std::string& language, LayoutByLanguage settings);

/// The layouts to offer for a language of these letters: `own`, then those that type it.
std::vector<std::string> choices(const std::vector<std::string>& letters, const LegendsByLayout& legends);

/// The layout to type a language on: the one set for it, as long as it is known; else the keyboard's own
/// (`chosen`) when it types the language or nothing does; else, of those that do, the one with most keys
/// in common with the keyboard's own, and the first of equals.
std::string pick(const std::string& language, const std::vector<std::string>& letters,
                 const std::string& chosen, const LayoutByLanguage& settings, const LegendsByLayout& legends);

/// The layouts that type these letters, by id.
std::vector<std::string> fitting(const std::vector<std::string>& letters, const LegendsByLayout& legends);
bool types(const std::vector<std::string>& letters, const Legends& legends);

}  // namespace PracticeLayout

/// Whether a key is where text is typed: the number pad and the keys beside it are not taught.
constexpr bool isTaught(KeyCode code) { return code < 64 || code == 93 || code == 94; }

/// How a character is typed: a key, and whether with shift.
struct KeyStroke {
    KeyCode keyCode = 0;
    bool shift = false;

    /// The stroke of a character on a layout, without shift where both do; nothing when no key taught has it.
    static std::optional<KeyStroke> of(std::string_view character, const Legends& legends);

    bool operator==(const KeyStroke&) const = default;
};

}  // namespace tapcore

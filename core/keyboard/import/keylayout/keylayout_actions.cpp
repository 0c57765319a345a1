#include "core/keyboard/import/keylayout/keylayout_actions.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "core/foundation/characters.h"
#include "core/foundation/integers.h"
#include "core/foundation/utf8.h"

namespace tapcore {
namespace {

constexpr std::string_view plainState = "none";
constexpr std::size_t longestLegend = 8;  ///< in characters

/// Marks that combine, and the characters that show them alone.
constexpr std::array<std::pair<char32_t, std::string_view>, 14> spacingMarks = {{
    {0x0300, "`"},
    {0x0301, "´"},
    {0x0302, "^"},
    {0x0303, "~"},
    {0x0304, "¯"},
    {0x0306, "˘"},
    {0x0307, "˙"},
    {0x0308, "¨"},
    {0x030A, "˚"},
    {0x030B, "˝"},
    {0x030C, "ˇ"},
    {0x0327, "¸"},
    {0x0328, "˛"},
    {0x0331, "ˍ"},
}};

/// A mark alone as a key shows it: its spacing form, or a dotted circle that carries it.
std::string spacing(const std::string& mark) {
    for (const auto& [combining, alone] : spacingMarks)
        if (utf8(combining) == mark) return std::string(alone);
    return "◌" + mark;
}

bool isShown(const std::string& text) {
    const auto all = characters(text);
    return std::any_of(all.begin(), all.end(), [](std::string_view c) { return isVisible(c) || isMark(c); });
}

KeyLegend checked(const std::string& text) {
    const auto all = characters(text);
    if (text.empty()) return {.whyNone = "nothing"};
    if (std::any_of(all.begin(), all.end(), isControl)) return {.whyNone = "a control character"};
    if (!isShown(text)) return {.whyNone = "something blank or invisible"};
    if (all.size() > longestLegend) return {.whyNone = "more than fits on a key"};
    return {.text = isMark(text) ? spacing(text) : text};
}

/// How far into the states of a rule ("state" alone, or the numbers from "state" through "through") a state
/// is; none when the rule is for others. The plain state is number 0.
std::optional<std::int64_t> stepsInto(const XmlElement& rule, std::string_view state) {
    const std::string first = rule.required("state");
    if (first == state) return 0;
    const auto from = parseInteger(first);
    const auto through = parseInteger(rule.attribute("through").value_or(""));
    const auto wanted = state == plainState ? std::optional<std::int64_t>(0) : parseInteger(state);
    if (!from || !through || !wanted || *from < 0 || *wanted < *from || *wanted > *through)
        return std::nullopt;
    return *wanted - *from;
}

/// A rule's output: with a multiplier, the character that many times `steps` further on.
std::string outputOf(const XmlElement& rule, std::int64_t steps) {
    std::string output = rule.attribute("output").value_or("");
    const auto multiplier = parseInteger(rule.attribute("multiplier").value_or(""));
    constexpr std::int64_t last = 0x10FFFF;
    if (output.empty() || !multiplier || *multiplier < 0 || *multiplier > last || steps > last) return output;
    const std::int64_t scalar = static_cast<std::int64_t>(firstScalar(output)) + *multiplier * steps;
    return scalar > last ? "" : utf8(static_cast<char32_t>(scalar));
}

/// What the rules output in a state; "" for nothing.
std::string outputIn(std::string_view state, const std::vector<XmlElement>& rules) {
    for (const XmlElement& rule : rules)
        if (const auto steps = stepsInto(rule, state)) return outputOf(rule, *steps);
    return "";
}

}  // namespace

KeylayoutActions::KeylayoutActions(const XmlElement& keyboard) {
    for (const XmlElement& actions : keyboard.children("actions"))
        for (const XmlElement& action : actions.children("action"))
            actions_.emplace(action.attribute("id").value_or(""), action);
    for (const XmlElement& terminators : keyboard.children("terminators"))
        for (const XmlElement& rule : terminators.children("when")) terminators_.push_back(rule);
}

std::optional<KeylayoutActions::Rules> KeylayoutActions::rulesOf(const XmlElement& key) const {
    if (const auto own = key.child("action")) return own->children("when");
    const auto named = key.attribute("action");
    const auto found = named ? actions_.find(*named) : actions_.end();
    if (found == actions_.end()) return std::nullopt;
    return found->second.children("when");
}

std::string KeylayoutActions::accent(const std::string& state,
                                     const std::optional<XmlElement>& spaceKey) const {
    std::string ended = outputIn(state, terminators_);
    if (isShown(ended) || !spaceKey) return ended;
    const auto rules = rulesOf(*spaceKey);
    return rules ? outputIn(state, *rules) : "";
}

KeyLegend KeylayoutActions::legend(const XmlElement& key, const std::optional<XmlElement>& spaceKey) const {
    if (const auto output = key.attribute("output")) return checked(*output);
    const auto rules = rulesOf(key);
    if (!rules) return {.whyNone = "no output, and no action that the file has"};
    const auto plain = std::find_if(rules->begin(), rules->end(),
                                    [](const XmlElement& rule) { return stepsInto(rule, plainState); });
    if (plain == rules->end()) return {.whyNone = "an action only after a dead key"};
    if (const std::string output = outputOf(*plain, 0); !output.empty()) return checked(output);
    const std::string next = plain->attribute("next").value_or(std::string(plainState));
    if (next == plainState) return {.whyNone = "nothing"};
    KeyLegend result = checked(accent(next, spaceKey));
    result.isDead = !result.text.empty();
    if (!result.isDead) result.whyNone = "a dead key whose accent the file does not show";
    return result;
}

}  // namespace tapcore

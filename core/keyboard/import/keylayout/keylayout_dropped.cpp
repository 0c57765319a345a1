#include "core/keyboard/import/keylayout/keylayout_dropped.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

namespace tapcore {
namespace {

/// Which element belongs in which.
constexpr std::pair<std::string_view, std::string_view> structure[] = {
    {"keyboard", "layouts"},
    {"layouts", "layout"},
    {"keyboard", "modifierMap"},
    {"keyboard", "keyMapSet"},
    {"modifierMap", "keyMapSelect"},
    {"keyMapSelect", "modifier"},
    {"keyMapSet", "keyMap"},
    {"keyMap", "key"},
    {"key", "action"},
    {"keyboard", "actions"},
    {"actions", "action"},
    {"action", "when"},
    {"keyboard", "terminators"},
    {"terminators", "when"},
};

bool belongsIn(std::string_view parent, std::string_view child) {
    return std::find(std::begin(structure), std::end(structure), std::pair(parent, child)) !=
           std::end(structure);
}

std::string listed(const std::set<std::uint16_t>& codes) {
    std::string text;
    for (const std::uint16_t code : codes) text += (text.empty() ? "" : ", ") + std::to_string(code);
    return "[" + text + "]";
}

std::string listed(const std::set<std::size_t>& lines) {
    const std::string first = "line " + std::to_string(*lines.begin());
    return lines.size() == 1 ? first : first + " and " + std::to_string(lines.size() - 1) + " more";
}

}  // namespace

void KeylayoutDropped::addForeign(const XmlElement& element) {
    const std::string name(element.name());
    if (element.holdsText()) addAt(element, "text within <" + name + "> is not expected here");
    for (const XmlElement& child : element.children()) {
        if (belongsIn(name, child.name())) addForeign(child);
        else addAt(child, "<" + std::string(child.name()) + "> within <" + name + "> is not expected here");
    }
}

std::vector<std::string> KeylayoutDropped::sentences() const {
    std::vector<std::string> result;
    for (const auto& [why, lines] : places_) result.push_back(listed(lines) + ": " + why);
    result.insert(result.end(), sentences_.begin(), sentences_.end());
    for (const auto& [why, codes] : keys_) result.push_back("key codes " + listed(codes) + ": " + why);
    return result;
}

}  // namespace tapcore

#include "core/practice/practice_layout.h"

#include <algorithm>
#include <cstddef>

namespace tapcore {
namespace {

/// On how many keys two layouts have the same character, without shift.
std::ptrdiff_t keysInCommon(const Legends& one, const Legends& other) {
    return std::count_if(one.begin(), one.end(), [&](const auto& key) {
        const auto found = other.find(key.first);
        return isTaught(key.first) && found != other.end() && !key.second.empty() && !found->second.empty() &&
               key.second.front() == found->second.front();
    });
}

}  // namespace

PracticeLayout::LayoutByLanguage PracticeLayout::setting(const std::string& layout,
                                                         const std::string& language,
                                                         LayoutByLanguage settings) {
    if (layout == own) settings.erase(language);
    else settings[language] = layout;
    return settings;
}

std::vector<std::string> PracticeLayout::choices(const std::vector<std::string>& letters,
                                                 const LegendsByLayout& legends) {
    std::vector<std::string> offered = fitting(letters, legends);
    offered.insert(offered.begin(), std::string(own));
    return offered;
}

std::string PracticeLayout::pick(const std::string& language, const std::vector<std::string>& letters,
                                 const std::string& chosen, const LayoutByLanguage& settings,
                                 const LegendsByLayout& legends) {
    const auto set = settings.find(language);
    if (set != settings.end() && legends.contains(set->second)) return set->second;
    const auto keyboard = legends.find(chosen);
    if (keyboard != legends.end() && types(letters, keyboard->second)) return chosen;
    const std::vector<std::string> fit = fitting(letters, legends);
    if (fit.empty()) return chosen;
    if (keyboard == legends.end()) return fit.front();
    return *std::max_element(fit.begin(), fit.end(), [&](const std::string& a, const std::string& b) {
        return keysInCommon(legends.at(a), keyboard->second) < keysInCommon(legends.at(b), keyboard->second);
    });
}

std::vector<std::string> PracticeLayout::fitting(const std::vector<std::string>& letters,
                                                 const LegendsByLayout& legends) {
    std::vector<std::string> fit;
    for (const auto& [layout, keys] : legends)
        if (types(letters, keys)) fit.push_back(layout);
    return fit;
}

bool PracticeLayout::types(const std::vector<std::string>& letters, const Legends& legends) {
    return std::all_of(letters.begin(), letters.end(),
                       [&](const std::string& letter) { return KeyStroke::of(letter, legends).has_value(); });
}

std::optional<KeyStroke> KeyStroke::of(std::string_view character, const Legends& legends) {
    if (character == " ") return KeyStroke{spaceKey, false};
    for (const std::size_t level : {0U, 1U})
        for (const auto& [code, faces] : legends)
            if (isTaught(code) && faces.size() > level && faces[level] == character)
                return KeyStroke{code, level == 1};
    return std::nullopt;
}

}  // namespace tapcore

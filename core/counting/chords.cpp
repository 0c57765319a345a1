#include "core/counting/chords.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "core/counting/key_face.h"
#include "core/foundation/characters.h"

namespace tapcore::Chords {
namespace {

constexpr std::array<std::pair<Modifiers, std::string_view>, 5> faces = {{
    {Modifiers::control, "⌃"},
    {Modifiers::option, "⌥"},
    {Modifiers::shift, "⇧"},
    {Modifiers::command, "⌘"},
    {Modifiers::function, "fn"},
}};

}  // namespace

std::string name(KeyCode keyCode, const Legends& legends) {
    const auto found = legends.find(keyCode);
    if (found == legends.end() || found->second.empty()) return "key " + std::to_string(keyCode);
    const std::string& legend = found->second.front();
    return isSingleCharacter(legend) ? uppercased(legend) : legend;
}

std::vector<std::string> keys(const Tally::Chord& chord, const Legends& legends) {
    std::vector<std::string> result;
    for (const auto& [member, face] : faces)
        if (chord.modifiers.contains(member)) result.emplace_back(face);
    result.push_back(name(chord.keyCode, legends));
    return result;
}

std::string compact(const std::vector<std::string>& keys) {
    if (keys.empty()) return "";
    std::string label;
    for (std::size_t i = 0; i + 1 < keys.size(); ++i) label += keys[i];
    const std::string_view last = KeyFace::glyph(keys.back()).value_or(keys.back());
    const bool isSpace = last.empty();
    if (!label.empty() && (isSpace || !isSingleCharacter(last))) label += ' ';
    return label.append(isSpace ? "Space" : last);
}

std::vector<ChordRow> top(const Tally::ChordCounts& chords, const Legends& legends, std::int64_t limit) {
    std::vector<std::pair<Tally::Chord, std::int64_t>> counted;
    std::copy_if(chords.begin(), chords.end(), std::back_inserter(counted),
                 [](const auto& item) { return item.second >= 1; });
    std::stable_sort(counted.begin(), counted.end(),
                     [](const auto& a, const auto& b) { return a.second > b.second; });
    const auto kept = std::min(counted.size(), static_cast<std::size_t>(std::max<std::int64_t>(limit, 0)));
    std::vector<ChordRow> rows;
    for (std::size_t i = 0; i < kept; ++i)
        rows.push_back({counted[i].first, counted[i].second, keys(counted[i].first, legends)});
    return rows;
}

}  // namespace tapcore::Chords

#include "core/counting/chords.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>
#include <utility>

#include "core/counting/key_face.h"
#include "core/foundation/characters.h"

namespace tapcore {
namespace {

constexpr std::array<std::pair<Modifiers, std::string_view>, 5> faces = {{
    {Modifiers::control, "⌃"},
    {Modifiers::option, "⌥"},
    {Modifiers::shift, "⇧"},
    {Modifiers::command, "⌘"},
    {Modifiers::function, "fn"},
}};

/// The largest counts of at least 1, at most `limit`, in descending order; of equal ones the lower key is
/// first.
template <class Key>
std::vector<std::pair<Key, std::int64_t>> mostCounted(const FlatMap<Key, std::int64_t>& counts,
                                                      std::size_t limit) {
    std::vector<std::pair<Key, std::int64_t>> ranked;
    std::copy_if(counts.begin(), counts.end(), std::back_inserter(ranked),
                 [](const auto& item) { return item.second >= 1; });
    std::stable_sort(ranked.begin(), ranked.end(),
                     [](const auto& one, const auto& other) { return one.second > other.second; });
    if (ranked.size() > limit)
        ranked.erase(ranked.begin() + static_cast<std::ptrdiff_t>(limit), ranked.end());
    return ranked;
}

}  // namespace

namespace Chords {

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
    std::vector<ChordRow> rows;
    for (const auto& [chord, count] :
         mostCounted(chords, static_cast<std::size_t>(std::max<std::int64_t>(limit, 0))))
        rows.push_back({chord, count, keys(chord, legends)});
    return rows;
}

}  // namespace Chords

std::vector<KeyRow> topKeys(const Tally::KeyCounts& counts, const Legends& legends, std::size_t limit) {
    std::vector<KeyRow> rows;
    for (const auto& [code, count] : mostCounted(counts, limit))
        rows.push_back({code, Chords::name(code, legends), count});
    return rows;
}

}  // namespace tapcore

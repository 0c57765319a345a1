#include "core/counting/key_face.h"

#include "core/foundation/characters.h"

namespace tapcore::KeyFace {
std::optional<std::string_view> glyph(std::string_view name) {
    for (const auto& [known, face] : glyphs)
        if (known == name) return face;
    return std::nullopt;
}

std::vector<std::string> lines(const std::vector<std::string>& legend) {
    if (legend.size() == 1) return {std::string(glyph(legend[0]).value_or(legend[0]))};
    if (legend.size() != 2) return legend;
    if (legend[1] == uppercased(legend[0])) return {legend[1]};
    return {legend[1], legend[0]};
}

std::vector<std::string> shown(const std::vector<std::string>& legend,
                               const std::optional<std::string>& label, bool named) {
    if (label && !label->empty()) return {*label};
    if (legend.empty()) return {};
    const std::string& first = legend[0];
    if (isSingleCharacter(first)) {
        if (named || isLetter(first) || isNumber(first)) return {uppercased(first)};
        return {};
    }
    return named ? lines(legend) : std::vector<std::string>{};
}

}  // namespace tapcore::KeyFace

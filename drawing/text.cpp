#include "drawing/text.h"

#include <algorithm>
#include <vector>

#include "core/foundation/characters.h"
#include "core/foundation/text_pieces.h"
#include "core/foundation/utf8.h"

namespace drawing {
namespace {

/// Wider than any letter of a common font, in ems.
constexpr double widest = 1.4;

/// The longest beginning that has room with "…" behind it; "" when not even that has.
std::string shortened(const std::string& text, const Font& font, double room, const TextWidth& width) {
    const auto characters = tapcore::characters(text);
    const auto beginning = [&](std::size_t count) {
        std::size_t size = 0;
        for (std::size_t i = 0; i < count; ++i) size += characters[i].size();
        return std::string(tapcore::trimmedWhiteSpace(text.substr(0, size))) + "…";
    };
    std::size_t fits = 0;
    std::size_t tooMany = characters.size();
    while (fits + 1 < tooMany) {
        const std::size_t middle = (fits + tooMany) / 2;
        (width(beginning(middle), font) <= room ? fits : tooMany) = middle;
    }
    const std::string result = beginning(fits);
    return width(result, font) <= room ? result : "";
}

}  // namespace

Font Font::withWeight(Weight value) const {
    Font result = *this;
    result.weight = value;
    return result;
}

Font Font::withSize(double value) const {
    Font result = *this;
    result.size = value;
    return result;
}

Font Font::withMonospacedDigits() const {
    Font result = *this;
    result.monospacedDigits = true;
    return result;
}

double roughWidth(std::string_view text, const Font& font) {
    constexpr double perCharacter = 0.66;
    return static_cast<double>(tapcore::characterCount(text)) * perCharacter * font.size;
}

std::vector<std::string> linesOf(std::string_view text, const Font& font, double room,
                                 const TextWidth& width) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::string word(tapcore::takePiece(text, ' '));
        if (word.empty()) continue;
        if (!lines.empty() && width(lines.back() + ' ' + word, font) <= room) lines.back() += ' ' + word;
        else lines.push_back(word);
    }
    return lines;
}

FittedText fitted(const Text& text, const TextWidth& width) {
    FittedText result{tapcore::repairedUtf8(text.text), text.font, text.at};
    const auto surelyFits = [&] {
        return static_cast<double>(tapcore::characterCount(result.text)) * widest * text.font.size <=
               text.width;
    };
    if (text.width > 0 && !surelyFits()) {
        const double natural = width(result.text, text.font);
        if (natural > text.width) {
            result.font.size *= std::max(text.width / natural, std::clamp(text.minimumScale, 0.0, 1.0));
            if (width(result.text, result.font) > text.width * 1.001)
                result.text = shortened(result.text, result.font, text.width, width);
        }
    }
    if (text.anchor == Text::Anchor::middle) result.baseline.y += result.font.capHeight() / 2;
    return result;
}

}  // namespace drawing

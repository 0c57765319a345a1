#include "app/practice/frame.h"

#include <algorithm>
#include <cwchar>
#include <utility>

#include "core/foundation/characters.h"
#include "core/foundation/utf8.h"

namespace tappora {
namespace {

/// The columns of one character: those of its first scalar, since the others are laid over it.
std::size_t columnsOfCharacter(std::string_view character) {
    return static_cast<std::size_t>(
        std::max(wcwidth(static_cast<wchar_t>(tapcore::firstScalar(character))), 0));
}

}  // namespace

std::string Frame::text() const {
    std::string all;
    for (const FrameLine& line : lines) {
        for (const Span& span : line) all += span.text;
        all.erase(all.find_last_not_of(' ') + 1);
        all += '\n';
    }
    return all;
}

std::size_t columnsOf(std::string_view text) {
    std::size_t columns = 0;
    for (const std::string_view character : tapcore::characters(text))
        columns += columnsOfCharacter(character);
    return columns;
}

std::size_t columnsOf(const FrameLine& line) {
    std::size_t columns = 0;
    for (const Span& span : line) columns += columnsOf(span.text);
    return columns;
}

FrameLine clipped(const FrameLine& line, std::size_t columns) {
    FrameLine fitting;
    for (const Span& span : line) {
        Span piece{"", span.style};
        for (const std::string_view character : tapcore::characters(span.text)) {
            const std::size_t width = columnsOfCharacter(character);
            if (width > columns) {
                fitting.push_back(std::move(piece));
                return fitting;
            }
            columns -= width;
            piece.text += character;
        }
        fitting.push_back(std::move(piece));
    }
    return fitting;
}

FrameLine fitting(std::vector<FrameLine> ways, std::size_t columns) {
    const auto fits = [&](const FrameLine& line) { return columnsOf(line) <= columns; };
    const auto first = std::find_if(ways.begin(), ways.end(), fits);
    return std::move(first == ways.end() ? ways.back() : *first);
}

FrameLine spread(FrameLine left, FrameLine right, std::size_t columns) {
    const std::size_t taken = columnsOf(left) + columnsOf(right);
    if (taken >= columns) return left;
    left.push_back({std::string(columns - taken, ' ')});
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

}  // namespace tappora

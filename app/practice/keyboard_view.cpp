#include "app/practice/keyboard_view.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cmath>

#include "app/common/keyboard/fingers_view.h"
#include "core/foundation/characters.h"
#include "core/foundation/utf8.h"

namespace tappora {
namespace {

using tapcore::Board;
using tapcore::KeyCode;
using tapcore::Legends;

constexpr KeyCode spaceBar = 49;
constexpr std::size_t rowOfSpace = 4;
constexpr std::size_t rows = 5;

/// The line of a key's row; nothing for rows that type no text.
std::optional<std::size_t> lineOf(const Board::Key& key) {
    if (key.keyCode == spaceBar) return rowOfSpace;
    switch (key.row) {
        case Board::Row::number:
            return 0;
        case Board::Row::upper:
            return 1;
        case Board::Row::home:
            return 2;
        case Board::Row::lower:
            return 3;
        default:
            return std::nullopt;
    }
}

SpanStyle styleOf(Board::Finger finger) {
    switch (finger) {
        case Board::Finger::pinky:
            return SpanStyle::pinky;
        case Board::Finger::ring:
            return SpanStyle::ring;
        case Board::Finger::middle:
            return SpanStyle::middle;
        case Board::Finger::index:
            return SpanStyle::index;
        default:
            return SpanStyle::thumb;
    }
}

/// What is shown on a key: its unshifted legend, when that is one character.
std::string legendOf(KeyCode code, const Legends& legends) {
    if (code == spaceBar) return "     ";
    const auto found = legends.find(code);
    const bool isSingle = found != legends.end() && !found->second.empty() &&
                          tapcore::isSingleCharacter(found->second.front()) &&
                          columnsOf(found->second.front()) == 1;
    return isSingle ? found->second.front() : "";
}

bool isAscii(const std::string& text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

}  // namespace

KeyboardView::KeyboardView(const Board& board, Legends legends, const Legends& own)
    : board_(board.id), legends_(std::move(legends)) {
    for (const Board::Key& key : board.keys) {
        const auto line = lineOf(key);
        if (!line || !key.keyCode || !tapcore::isTaught(*key.keyCode)) continue;
        const std::string word = legendOf(*key.keyCode, own);
        const std::string legend = word.empty() ? legendOf(*key.keyCode, legends_) : word;
        const bool isKnown =
            std::any_of(keys_.begin(), keys_.end(), [&](const Key& k) { return k.code == key.keyCode; });
        if (legend.empty() || isKnown) continue;
        keys_.push_back({*line, key.center().x, legend, *key.keyCode, key.hand, key.finger});
    }
    std::stable_sort(keys_.begin(), keys_.end(),
                     [](const Key& a, const Key& b) { return a.row != b.row ? a.row < b.row : a.x < b.x; });
    double left = keys_.empty() ? 0 : keys_.front().x;
    for (const Key& key : keys_) left = std::min(left, key.x);
    for (Key& key : keys_) key.x -= left;
}

const KeyboardView::Key* KeyboardView::struck(const std::string& next) const {
    const auto stroke = tapcore::KeyStroke::of(next, legends_);
    const auto key = std::find_if(keys_.begin(), keys_.end(), [&](const Key& candidate) {
        return stroke && candidate.code == stroke->keyCode;
    });
    return key == keys_.end() ? nullptr : &*key;
}

std::optional<std::string> KeyboardView::finger(const std::string& next) const {
    const Key* key = struck(next);
    if (key == nullptr) return std::nullopt;
    if (key->code == spaceBar) return "a thumb";
    std::string words = fingerName(key->hand, key->finger);
    if (tapcore::KeyStroke::of(next, legends_)->shift)
        words += key->hand == Board::Hand::left ? ", with right shift" : ", with left shift";
    return words;
}

std::string KeyboardView::remark(const std::vector<std::string>& letters, const std::string& layout,
                                 const std::vector<std::string>& fitting) const {
    constexpr std::ptrdiff_t mostNamed = 8;
    const bool isLayout = !tapcore::PracticeLayout::types(letters, legends_);
    std::vector<std::string> missing;
    for (const std::string& letter : letters)
        if (isLayout ? !tapcore::KeyStroke::of(letter, legends_) : struck(letter) == nullptr)
            missing.push_back(letter);
    if (missing.empty()) return "";
    const auto named = std::min(mostNamed, std::ssize(missing));
    std::string text = fmt::format("{} has no key for {}", isLayout ? layout : board_,
                                   fmt::join(missing.begin(), missing.begin() + named, ", "));
    if (std::ssize(missing) > named) text += fmt::format(" and {} more", std::ssize(missing) - named);
    if (!isLayout) return text + "\n--board chooses another keyboard; see tappora boards";
    if (fitting.empty()) return text + "\n--layout chooses another layout; see tappora layouts";
    return text + fmt::format("\n--layout chooses another layout: {}", fmt::join(fitting, ", "));
}

std::vector<FrameLine> KeyboardView::lines(const std::string& next, const ScreenShape& shape) const {
    const bool isShown = shape.unicode || std::all_of(keys_.begin(), keys_.end(),
                                                      [](const Key& key) { return isAscii(key.legend); });
    if (!isShown || keys_.empty()) return {};
    for (const std::size_t columnsOfUnit : {4U, 3U})
        if (auto fitting = drawn(columnsOfUnit, struck(next), shape.columns)) return *fitting;
    return {};
}

/// The keys at so many columns for each key unit; nothing when they take more than there are.
std::optional<std::vector<FrameLine>> KeyboardView::drawn(std::size_t columnsOfUnit, const Key* next,
                                                          std::size_t columns) const {
    std::vector<FrameLine> lines(rows);
    std::vector<std::size_t> ends(rows, 0);
    for (const Key& key : keys_) {
        const std::string face = " " + key.legend + " ";
        const std::size_t width = columnsOf(face);
        const auto middle =
            static_cast<std::size_t>(std::lround(key.x * static_cast<double>(columnsOfUnit))) + 1;
        std::size_t& end = ends[key.row];
        const std::size_t start = std::max(middle - std::min(middle, width / 2), end);
        lines[key.row].push_back({std::string(start - end, ' ')});
        lines[key.row].push_back({face, &key == next ? SpanStyle::next : styleOf(key.finger)});
        end = start + width;
        if (end > columns) return std::nullopt;
    }
    std::erase_if(lines, [](const FrameLine& line) { return line.empty(); });
    return lines;
}

}  // namespace tappora

#include "core/practice/practice_extras.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "core/foundation/characters.h"

namespace tapcore {
namespace {

// One word in so many.
constexpr std::uint64_t numberEvery = 5;
constexpr std::uint64_t capitalEvery = 4;
constexpr std::uint64_t markEvery = 3;
constexpr std::uint64_t longestNumber = 4;

bool isOneIn(std::uint64_t many, SeededRandom& rng) { return rng.below(many) == 0; }

std::string drawn(const std::vector<std::string>& open, const std::optional<std::string>& focus,
                  SeededRandom& rng) {
    if (focus && isOneIn(2, rng)) return *focus;
    return open[static_cast<std::size_t>(rng.below(open.size()))];
}

std::string number(const std::vector<std::string>& open, const std::optional<std::string>& focus,
                   SeededRandom& rng) {
    std::string digits;
    for (std::uint64_t left = 1 + rng.below(longestNumber); left > 0; --left)
        digits += drawn(open, focus, rng);
    return digits;
}

std::string capitalised(const std::string& word) {
    const std::string_view first = firstCharacters(word, 1);
    const std::string capital = uppercased(first);
    return isSingleCharacter(capital) ? capital + word.substr(first.size()) : word;
}

/// The word with a mark behind so many of its characters.
std::string withMarkAt(const std::string& word, std::size_t position, const std::string& mark) {
    const std::size_t at = firstCharacters(word, position).size();
    return word.substr(0, at) + mark + word.substr(at);
}

/// The word with a mark where one writes it: quotes and parentheses around it, an apostrophe before its last
/// character, a hyphen in its middle, all others behind it.
std::string marked(const std::string& word, const std::string& mark, const std::vector<std::string>& open) {
    const auto isOpen = [&](const char* other) {
        return std::find(open.begin(), open.end(), other) != open.end();
    };
    const std::size_t length = characterCount(word);
    if (mark == "'") return withMarkAt(word, length - 1, mark);
    if (mark == "-") return withMarkAt(word, length / 2, mark);
    if (mark == "\"") return mark + word + mark;
    if (mark == "(") return mark + word + (isOpen(")") ? ")" : "");
    if (mark == ")") return (isOpen("(") ? "(" : "") + word + mark;
    return word + mark;
}

bool endsSentence(const std::string& word) { return word.find_last_of(".?!") + 1 == word.size(); }

}  // namespace

std::vector<std::string> PracticeExtras::apply(std::vector<std::string> words,
                                               const std::vector<std::string>& openDigits,
                                               const std::optional<std::string>& digitFocus,
                                               const std::vector<std::string>& openMarks,
                                               const std::optional<std::string>& markFocus,
                                               SeededRandom& rng) const {
    bool startsSentence = true;
    for (std::string& word : words) {
        const bool isNumber = digits && !openDigits.empty() && isOneIn(numberEvery, rng);
        if (isNumber) word = number(openDigits, digitFocus, rng);
        else if (capitals && (startsSentence || isOneIn(capitalEvery, rng))) word = capitalised(word);
        if (punctuation && !openMarks.empty() && isOneIn(markEvery, rng))
            word = marked(word, drawn(openMarks, markFocus, rng), openMarks);
        startsSentence = endsSentence(word);
    }
    return words;
}

}  // namespace tapcore

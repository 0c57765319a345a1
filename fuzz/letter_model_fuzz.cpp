// Letter models from any bytes: none, said with the place, or one whose words are made of open letters alone.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "core/foundation/json_fields.h"
#include "core/practice/letter_model.h"

namespace {

using tapcore::LetterModel;

/// Counts near the end of 64 bits end the program on purpose.
bool mayOverflow(const LetterModel& model) {
    constexpr std::int64_t most = 1'000'000'000'000;
    const auto isLarge = [](const auto& entry) { return entry.second > most || entry.second < -most; };
    return std::any_of(model.transitions.begin(), model.transitions.end(), [&](const auto& entry) {
        return std::any_of(entry.second.begin(), entry.second.end(), isLarge);
    });
}

/// Whether a text is so many of these letters. One letter may be the start of another: "e" and "é".
bool isMadeOf(std::string_view text, const std::vector<std::string>& open, std::size_t letters) {
    if (letters == 0) return text.empty();
    return std::any_of(open.begin(), open.end(), [&](const std::string& letter) {
        return text.starts_with(letter) && isMadeOf(text.substr(letter.size()), open, letters - 1);
    });
}

void check(const std::string& word, const std::vector<std::string>& open) {
    for (std::size_t letters = LetterModel::shortestWord; letters <= LetterModel::longestWord; ++letters)
        if (isMadeOf(word, open, letters)) return;
    std::abort();
}

void use(const LetterModel& model) {
    tapcore::SeededRandom rng(7);
    std::vector<std::string> open = model.order;
    for (; !open.empty(); open.pop_back())
        for (const std::string& word : model.lesson(open, open.front(), 5, rng)) check(word, open);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        const auto model = LetterModel::parse("xx", {reinterpret_cast<const char*>(data), size});
        if (!mayOverflow(model)) use(model);
    } catch (const tapcore::JsonError&) {
        // Not a letter model: said so.
    }
    return 0;
}

#include "core/practice/letter_walk.h"

#include <algorithm>

#include "core/foundation/checked.h"

namespace tapcore {
namespace {

constexpr int attemptsForWord = 40;
constexpr std::int64_t attemptsForEachWord = 40;
constexpr std::int64_t focusedForEachWord = 30;
constexpr std::size_t freeEvery = 3;  // every third word need not hold the focus letter

}  // namespace

LetterWalk::LetterWalk(const LetterModel& model, const std::vector<std::string>& open)
    : model_(&model), open_(open.begin(), open.end()) {}

std::optional<std::string> LetterWalk::word(SeededRandom& rng) {
    for (int i = 0; i < attemptsForWord; ++i) {
        if (!attempt(rng)) continue;
        std::string word;
        for (const std::string_view letter : letters_) word += letter;
        return word;
    }
    return std::nullopt;
}

bool LetterWalk::lastWordHolds(std::string_view letter) const {
    return std::find(letters_.begin(), letters_.end(), letter) != letters_.end();
}

bool LetterWalk::attempt(SeededRandom& rng) {
    letters_.clear();
    for (Node* here = node(LetterModel::wordStart, LetterModel::wordStart); here != nullptr;) {
        Candidate* const picked = pick(candidates(*here, letters_.size()), rng);
        if (picked == nullptr) return false;
        if (picked->character == LetterModel::wordEnd) return true;
        letters_.push_back(picked->character);
        if (picked->next == nullptr) picked->next = node(here->last, picked->character);
        here = picked->next;
    }
    return false;
}

LetterWalk::Candidates& LetterWalk::candidates(Node& node, std::size_t length) const {
    const Stage stage = length < LetterModel::shortestWord  ? within
                        : length < LetterModel::longestWord ? any
                                                            : atEnd;
    auto& candidates = node.stages[stage];
    if (!candidates) candidates = candidatesOf(*node.counts, stage);
    return *candidates;
}

bool LetterWalk::isOpen(std::string_view character, Stage stage) const {
    if (character == LetterModel::wordEnd) return stage != within;
    return stage != atEnd && open_.contains(std::string(character));
}

LetterWalk::Candidates LetterWalk::candidatesOf(const LetterModel::Counts& counts, Stage stage) const {
    Candidates candidates;
    std::int64_t sum = 0;
    for (const auto& [character, count] : counts)
        if (isOpen(character, stage)) {
            addChecked(sum, count);
            candidates.push_back({character, sum, nullptr});
        }
    return candidates;
}

/// One of the candidates by the weight of its count, or nothing when they weigh nothing. The first whose
/// running sum exceeds the number drawn is the one whose count exceeds what earlier counts left of that
/// number.
LetterWalk::Candidate* LetterWalk::pick(Candidates& from, SeededRandom& rng) {
    if (from.empty() || from.back().countsSoFar < 1) return nullptr;
    const auto drawn =
        static_cast<std::int64_t>(rng.below(static_cast<std::uint64_t>(from.back().countsSoFar)));
    for (Candidate& candidate : from)
        if (candidate.countsSoFar > drawn) return &candidate;
    return nullptr;
}

LetterWalk::Node* LetterWalk::node(std::string_view before, std::string_view last) {
    std::string context = std::string(before).append(last);
    const auto known = nodes_.find(context);
    if (known != nodes_.end()) return known->second.get();
    const LetterModel::Counts* counts = model_->transitions.find(context);
    if (counts == nullptr) return nullptr;
    return nodes_.emplace(std::move(context), std::make_unique<Node>(Node{counts, last})).first->second.get();
}

std::optional<std::string> LetterModel::word(const std::vector<std::string>& open, SeededRandom& rng) const {
    return LetterWalk(*this, open).word(rng);
}

std::vector<std::string> LetterModel::lesson(const std::vector<std::string>& open,
                                             const std::optional<std::string>& focus, std::int64_t count,
                                             SeededRandom& rng) const {
    LetterWalk walk(*this, open);
    std::vector<std::string> words;
    const std::int64_t attempts = checkedProduct(attemptsForEachWord, count);
    const std::int64_t focused = checkedProduct(focusedForEachWord, count);
    for (std::int64_t spent = 0; spent < attempts && static_cast<std::int64_t>(words.size()) < count;
         ++spent) {
        auto word = walk.word(rng);
        if (!word) continue;
        const bool isFree = !focus || spent >= focused || words.size() % freeEvery == freeEvery - 1;
        if (isFree || walk.lastWordHolds(*focus)) words.push_back(std::move(*word));
    }
    return words;
}

}  // namespace tapcore

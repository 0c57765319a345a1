#include "core/practice/own_letters.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "core/foundation/checked.h"
#include "core/practice/practice_layout.h"

namespace tapcore {
namespace {

constexpr double mostWeight = 4;

double sumOf(const OwnLetters& letters) {
    return std::accumulate(letters.begin(), letters.end(), 0.0, [](double sum, const auto& letter) {
        return sum + static_cast<double>(letter.second);
    });
}

/// How often a model has each letter.
std::map<std::string, double> lettersOf(const LetterModel& model) {
    std::map<std::string, double> letters;
    for (const auto& [context, counts] : model.transitions)
        for (const auto& [next, count] : counts)
            if (next != LetterModel::wordEnd) letters[next] += static_cast<double>(count);
    return letters;
}

/// What a letter's counts are multiplied by.
std::map<std::string, double> weightsFor(const LetterModel& model, const OwnLetters& own) {
    std::map<std::string, double> weights = lettersOf(model);
    const double all = std::accumulate(weights.begin(), weights.end(), 0.0,
                                       [](double sum, const auto& letter) { return sum + letter.second; });
    for (auto& [letter, count] : weights)
        count = count <= 0 ? 1 : std::clamp(shareOf(letter, own) * all / count, 1 / mostWeight, mostWeight);
    return weights;
}

std::int64_t scaled(std::int64_t count, double weight) {
    constexpr double most = 1e15;  // so that their sums stay within 64 bits
    if (count <= 0) return count;
    return std::max<std::int64_t>(1, std::llround(std::min(static_cast<double>(count) * weight, most)));
}

double costOf(const std::string& letter, const PracticeRules& rules, const LetterCounts& practised,
              const OwnLetters& own) {
    const auto time =
        statsOf(letter, practised).averageMilliseconds().value_or(2 * rules.targetMilliseconds());
    return shareOf(letter, own) * static_cast<double>(time);
}

}  // namespace

std::optional<OwnLetters> ownLetters(const Tally::KeyCounts& counts, const Legends& legends,
                                     const std::vector<std::string>& letters) {
    OwnLetters own;
    std::int64_t all = 0;
    for (const auto& [code, faces] : legends) {
        if (faces.empty() || !isTaught(code)) continue;
        if (std::find(letters.begin(), letters.end(), faces.front()) == letters.end()) continue;
        const std::int64_t presses = counts.valueOr(code, 0);
        addChecked(own[faces.front()], presses);
        addChecked(all, presses);
    }
    if (all < fewestOwnLetters) return std::nullopt;
    return own;
}

double shareOf(const std::string& letter, const OwnLetters& own) {
    const auto found = own.find(letter);
    const double all = sumOf(own);
    return found == own.end() || all <= 0 ? 0 : static_cast<double>(found->second) / all;
}

LetterModel weighed(const LetterModel& model, const OwnLetters& own) {
    const auto weights = weightsFor(model, own);
    LetterModel result{model.language, model.order, {}};
    for (const auto& [context, counts] : model.transitions) {
        LetterModel::Counts& changed = result.transitions[context];
        for (const auto& [next, count] : counts)
            changed[next] = next == LetterModel::wordEnd ? count : scaled(count, weights.at(next));
    }
    return result;
}

std::optional<std::string> costliest(const PracticeRules& rules, const std::vector<std::string>& open,
                                     const LetterCounts& practised, const OwnLetters& own) {
    std::vector<std::string> candidates = open;
    std::erase_if(candidates,
                  [&](const std::string& letter) { return rules.learned(statsOf(letter, practised)); });
    if (candidates.empty()) candidates = open;
    std::optional<std::string> choice;
    double most = 0;
    for (const std::string& letter : candidates)
        if (const double cost = costOf(letter, rules, practised, own); cost > most) {
            choice = letter;
            most = cost;
        }
    return choice;
}

}  // namespace tapcore

#include "core/practice/lesson_plan.h"

#include <algorithm>
#include <cstddef>

#include "core/practice/practice_course.h"

namespace tapcore {
namespace {

using Letters = std::vector<std::string>;

bool holds(const Letters& letters, const std::string& letter) {
    return std::find(letters.begin(), letters.end(), letter) != letters.end();
}

Letters joined(const Letters& letters, const Letters& others) {
    Letters all = letters;
    for (const std::string& other : others)
        if (!holds(all, other)) all.push_back(other);
    return all;
}

bool anyHolds(const Letters& words, const std::string& letter) {
    return std::any_of(words.begin(), words.end(),
                       [&](const std::string& word) { return word.find(letter) != std::string::npos; });
}

/// A share of few words may hold its letter by bad luck nowhere; after so many, the letters make no such
/// words.
constexpr int triesForShare = 25;

/// So many words for one letter of these letters.
Letters wordsFor(const LetterModel& model, const Letters& letters, const std::string& letter,
                 std::int64_t count, SeededRandom& rng) {
    Letters words = model.lesson(letters, letter, count, rng);
    for (int tries = 1; tries < triesForShare && !anyHolds(words, letter); ++tries)
        words = model.lesson(letters, letter, count, rng);
    return words;
}

/// A share of words for a letter that these letters make no words with: those that hold it are made of all
/// letters, the others stay.
Letters borrowing(Letters words, const LetterModel& model, const Letters& letters, const std::string& letter,
                  std::int64_t count, SeededRandom& rng) {
    Letters borrowed = wordsFor(model, joined(letters, model.order), letter, count, rng);
    for (std::size_t i = 0; i < borrowed.size(); ++i)
        if (i >= words.size()) words.push_back(borrowed[i]);
        else if (borrowed[i].find(letter) != std::string::npos) words[i] = borrowed[i];
    return words;
}

/// Words in turn for each of the letters that are stressed. For one that was asked for and that the open ones
/// make no words with, letters are borrowed.
Letters mixedWords(const LetterModel& model, const Letters& open, const Letters& stressed, bool isAskedFor,
                   std::int64_t count, SeededRandom& rng) {
    const auto shares = static_cast<std::int64_t>(stressed.size());
    const std::int64_t wordsOfShare = (count + shares - 1) / shares;
    std::vector<Letters> words;
    for (const std::string& letter : stressed) {
        words.push_back(wordsFor(model, open, letter, wordsOfShare, rng));
        if (isAskedFor && !anyHolds(words.back(), letter))
            words.back() = borrowing(std::move(words.back()), model, open, letter, wordsOfShare, rng);
    }
    Letters mixed;
    for (std::int64_t i = 0; i < count; ++i) {
        const Letters& share = words[static_cast<std::size_t>(i % shares)];
        const auto at = static_cast<std::size_t>(i / shares);
        if (at < share.size()) mixed.push_back(share[at]);
    }
    return mixed;
}

std::optional<std::string> stressedBy(const PracticeRules& rules, const Letters& open,
                                      const LetterCounts& practised, const LessonWish& wish) {
    const auto own = wish.own ? costliest(rules, open, practised, *wish.own) : std::nullopt;
    return own ? own : rules.focus(open, practised);
}

}  // namespace

std::optional<std::string> LessonPlan::focus() const {
    if (stressed.empty()) return std::nullopt;
    return stressed.front();
}

LessonPlan planLesson(const LetterModel& model, const PracticeRules& rules, const LetterCounts& practised,
                      const LessonWish& wish, SeededRandom& rng) {
    const auto openOf = [&](PracticeCourse course, std::int64_t opened) {
        return rules.open(course.order(), practised, courseStart, opened);
    };
    LessonPlan plan;
    plan.open = rules.open(model.order, practised, std::nullopt, wish.lettersOpened);
    plan.openDigits = openOf(PracticeCourse::digits, wish.digitsOpened);
    plan.openMarks = openOf(PracticeCourse::marks, wish.marksOpened);
    plan.stressed = wish.letters;
    if (plan.stressed.empty())
        if (const auto focus = stressedBy(rules, plan.open, practised, wish)) plan.stressed = {*focus};
    const Letters letters = joined(plan.open, plan.stressed);
    plan.words = plan.stressed.empty()
                     ? Letters{}
                     : mixedWords(model, letters, plan.stressed, !wish.letters.empty(), wish.words, rng);
    plan.words =
        wish.extras.apply(std::move(plan.words), plan.openDigits, rules.focus(plan.openDigits, practised),
                          plan.openMarks, rules.focus(plan.openMarks, practised), rng);
    return plan;
}

}  // namespace tapcore

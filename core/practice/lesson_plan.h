#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/practice/letter_model.h"
#include "core/practice/letter_stats.h"
#include "core/practice/own_letters.h"
#include "core/practice/practice_extras.h"
#include "core/practice/practice_rules.h"
#include "core/practice/seeded_random.h"

namespace tapcore {

/// So many digits, or marks, are open at the beginning.
inline constexpr std::int64_t courseStart = 3;

/// What the next lesson is to be like.
struct LessonWish {
    std::int64_t words = 30;
    std::vector<std::string> letters =
        {};                              ///< to practise these, whatever is open; the rules' focus when empty
    std::optional<OwnLetters> own = {};  ///< stresses the letter that costs most of what is typed daily
    PracticeExtras extras = {};
    // How many letters, digits and marks were open before: none of them closes again.
    std::int64_t lettersOpened = 0;
    std::int64_t digitsOpened = 0;
    std::int64_t marksOpened = 0;
};

/// A lesson: what it practises and its words.
struct LessonPlan {
    std::vector<std::string> open;      ///< the letters open by the rules
    std::vector<std::string> stressed;  ///< the letters that words were chosen for
    std::vector<std::string> openDigits;
    std::vector<std::string> openMarks;
    std::vector<std::string> words;

    /// The letter to show progress of; nothing when none is open.
    std::optional<std::string> focus() const;
};

/// Plans a lesson after what was practised on its layout. The same practice, wish and generator give the same
/// lesson.
///
/// A lesson for certain letters is made in equal shares of words for each, mixed. For a letter that the
/// open ones make no words with ("q" without "u"), the words of its share that hold it are made of all
/// letters.
LessonPlan planLesson(const LetterModel& model, const PracticeRules& rules, const LetterCounts& practised,
                      const LessonWish& wish, SeededRandom& rng);

}  // namespace tapcore

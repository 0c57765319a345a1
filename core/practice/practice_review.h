#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "core/counting/day.h"
#include "core/foundation/calendar.h"
#include "core/practice/letter_stats.h"
#include "core/practice/practice_history.h"
#include "core/practice/practice_rules.h"

namespace tapcore {

/// What a finished lesson came to.
struct LessonResult {
    /// A letter that the lesson opened.
    struct NewLetter {
        std::string letter;
        bool operator==(const NewLetter&) const = default;
    };
    /// By how much the lesson was faster than any before it on its layout.
    struct PersonalBest {
        std::int64_t gain = 0;
        bool operator==(const PersonalBest&) const = default;
    };
    /// The letter stressed was typed faster than in all practice before.
    struct Focus {
        std::string letter;
        std::int64_t wpm = 0;
        bool operator==(const Focus&) const = default;
    };
    /// The fastest lesson of the week.
    struct WeekBest {
        bool operator==(const WeekBest&) const = default;
    };
    using News = std::variant<NewLetter, PersonalBest, Focus, WeekBest>;

    std::int64_t wpm = 0;  ///< 0 when no press was timed
    double accuracy = 1;
    std::int64_t seconds = 0;
    std::vector<bool> stars;   ///< right as often as the rules ask; as fast as usual; the day's goal reached
    std::optional<News> news;  ///< the best of what is new
    std::int64_t todaySeconds = 0;
    std::int64_t goalSeconds = 0;
    std::int64_t streak = 0;  ///< days in a row that reached the goal

    bool operator==(const LessonResult&) const = default;
};

/// A lesson that was typed to its end.
struct FinishedLesson {
    LetterCounts counts;
    std::int64_t seconds = 0;
    std::string layout;
    std::optional<std::string> focus;      ///< the letter stressed
    std::optional<std::string> newLetter;  ///< the letter that it opened
};

/// Judges a finished lesson against the typist's own practice before it, and against nobody else's.
namespace PracticeReview {

/// `before` is all practice without the lesson.
LessonResult review(const FinishedLesson& lesson, const PracticeHistory& before, const PracticeRules& rules,
                    const Day& today, std::int64_t goalSeconds, const Calendar& calendar);

/// The typist's usual speed on a layout, over the last 14 days; nothing while they hold too few timed
/// presses.
std::optional<std::int64_t> usual(const PracticeHistory& before, const std::string& layout,
                                  const PracticeRules& rules, const Day& today, const Calendar& calendar);
/// The letters that took longest, the slowest first: at most so many, of those timed at least three
/// times.
std::vector<std::string> slowest(const LetterCounts& counts, std::size_t limit);
/// Whether a lesson's speed may count as a best: typed long enough to be judged, and right often enough.
bool counts(const LetterCounts& counts, const PracticeRules& rules);

/// Over all letters: the speed of the timed presses, and what part of the presses was right.
std::int64_t wpm(const LetterCounts& counts);
double accuracy(const LetterCounts& counts);

}  // namespace PracticeReview

}  // namespace tapcore

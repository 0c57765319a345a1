#include "core/practice/practice_review.h"

#include <algorithm>

#include "core/foundation/characters.h"
#include "core/foundation/checked.h"
#include "core/practice/practice_record.h"

namespace tapcore {
namespace {

constexpr std::int64_t usualDays = 14;
constexpr std::int64_t fewestTimedOfLetter = 3;

/// The focus letter, when it was typed faster than it ever was on average.
std::optional<LessonResult::News> focusNews(const FinishedLesson& lesson, const PracticeHistory& before) {
    if (!lesson.focus) return std::nullopt;
    const LetterStats now = statsOf(*lesson.focus, lesson.counts);
    const LetterStats earlier = statsOf(*lesson.focus, before.totals(lesson.layout));
    if (now.timed < fewestTimedOfLetter || earlier.timed < fewestTimedOfLetter ||
        PracticeRules::wpm(now) <= PracticeRules::wpm(earlier))
        return std::nullopt;
    return LessonResult::Focus{*lesson.focus, PracticeRules::wpm(now)};
}

std::optional<LessonResult::News> newsOf(const FinishedLesson& lesson, const PracticeHistory& before,
                                         const PracticeRules& rules, const Day& weekStart) {
    if (lesson.newLetter) return LessonResult::NewLetter{*lesson.newLetter};
    const std::int64_t speed = PracticeReview::wpm(lesson.counts);
    const bool mayBeBest = PracticeReview::counts(lesson.counts, rules);
    const std::int64_t best = before.best(lesson.layout);
    if (mayBeBest && best > 0 && speed > best) return LessonResult::PersonalBest{speed - best};
    if (auto news = focusNews(lesson, before)) return news;
    const std::int64_t weekBest = before.bestSince(weekStart, lesson.layout);
    if (mayBeBest && weekBest > 0 && speed > weekBest) return LessonResult::WeekBest{};
    return std::nullopt;
}

}  // namespace

LessonResult PracticeReview::review(const FinishedLesson& lesson, const PracticeHistory& before,
                                    const PracticeRules& rules, const Day& today, std::int64_t goalSeconds,
                                    const Calendar& calendar) {
    PracticeHistory after = before;
    addChecked(after.days[today].seconds, lesson.seconds);
    LessonResult result;
    result.wpm = wpm(lesson.counts);
    result.accuracy = accuracy(lesson.counts);
    result.seconds = lesson.seconds;
    result.todaySeconds = after.seconds(today);
    result.goalSeconds = goalSeconds;
    result.streak = PracticeRecord::streak(after, today, goalSeconds, calendar);
    result.stars = {
        result.accuracy >= rules.targetAccuracy,
        result.wpm > 0 && result.wpm >= usual(before, lesson.layout, rules, today, calendar).value_or(0),
        after.reached(today, goalSeconds)};
    result.news = newsOf(lesson, before, rules, today.adding(1 - daysOfWeek, calendar));
    return result;
}

std::optional<std::int64_t> PracticeReview::usual(const PracticeHistory& before, const std::string& layout,
                                                  const PracticeRules& rules, const Day& today,
                                                  const Calendar& calendar) {
    const LetterCounts recent = before.recent(today.adding(1 - usualDays, calendar), layout);
    if (sumOf(recent).timed < rules.samples) return std::nullopt;
    return wpm(recent);
}

std::vector<std::string> PracticeReview::slowest(const LetterCounts& counts, std::size_t limit) {
    std::vector<std::string> letters;
    for (const auto& [letter, stats] : counts)
        if (isLetter(letter) && stats.timed >= fewestTimedOfLetter) letters.push_back(letter);
    std::stable_sort(letters.begin(), letters.end(), [&](const std::string& a, const std::string& b) {
        return counts.at(a).averageMilliseconds() > counts.at(b).averageMilliseconds();
    });
    letters.resize(std::min(letters.size(), limit));
    return letters;
}

bool PracticeReview::counts(const LetterCounts& counts, const PracticeRules& rules) {
    const LetterStats all = sumOf(counts);
    return all.timed >= rules.samples && all.accuracy() >= rules.targetAccuracy;
}

std::int64_t PracticeReview::wpm(const LetterCounts& counts) { return PracticeRules::wpm(sumOf(counts)); }

double PracticeReview::accuracy(const LetterCounts& counts) { return sumOf(counts).accuracy(); }

}  // namespace tapcore

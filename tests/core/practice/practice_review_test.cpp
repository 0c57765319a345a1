#include "core/practice/practice_review.h"

#include <gtest/gtest.h>

#include "core/practice/practice_record.h"
#include "core/practice/practice_reminder.h"

namespace tapcore {
namespace {

const Calendar utc("UTC");
const Calendar berlin("Europe/Berlin");
const Day today(2026, 9, 20);
const PracticeRules rules(40);

Day daysAgo(std::int64_t days) { return today.adding(-days, utc); }

/// A day of practice of "e" on QWERTY: so many seconds, timed presses of so many milliseconds, a best speed.
PracticeDay practised(std::int64_t seconds, std::int64_t timed = 0, std::int64_t milliseconds = 0,
                      std::int64_t best = 0) {
    PracticeDay day;
    if (timed > 0) day.add("qwerty", "e", {timed, 0, timed, timed * milliseconds, 1});
    day.seconds = seconds;
    day.best = best;
    if (best > 0) day.bests["qwerty"] = best;
    return day;
}

PracticeHistory goalsReached(const std::vector<std::int64_t>& ago) {
    PracticeHistory history;
    for (const std::int64_t days : ago) history.days[daysAgo(days)] = practised(300);
    return history;
}

TEST(PracticeRecord, CountsDaysInARow) {
    const struct {
        const char* what;
        std::vector<std::int64_t> ago;
        std::int64_t streak, longest, thisWeek;
    } cases[] = {
        {"nothing", {}, 0, 0, 0},
        {"today alone", {0}, 1, 1, 1},
        {"up to yesterday, today still to come", {1, 2, 3}, 3, 3, 3},
        {"a day missed", {0, 2, 3, 4, 5}, 1, 4, 5},
        {"yesterday and today missed", {2, 3}, 0, 2, 2},
        {"the week's first day and the one before", {6, 7}, 0, 2, 1},
        {"across a month's end", {19, 20, 21}, 0, 3, 0},
        {"days to come", {0, -1, -2}, 1, 1, 1},
    };
    for (const auto& [what, ago, streak, longest, thisWeek] : cases) {
        const PracticeHistory history = goalsReached(ago);
        const PracticeRecord record(history, today, 300, utc);
        EXPECT_EQ(PracticeRecord::streak(history, today, 300, utc), streak) << what;
        EXPECT_EQ(record.longestStreak, longest) << what;
        EXPECT_EQ(record.daysThisWeek, thisWeek) << what;
    }
    EXPECT_EQ(PracticeRecord::streak(goalsReached({0, 1}), today, 301, utc), 0);
}

TEST(PracticeRecord, ComparesTheWeekWithTheOneBefore) {
    PracticeHistory history;
    history.days[today] = practised(60, 30, 200);
    history.days[daysAgo(6)] = practised(60, 30, 400, 44);
    history.days[daysAgo(7)] = practised(60, 59, 240);
    PracticeRecord record(history, today, 300, utc);
    EXPECT_EQ(record.bestWPM, 44);
    EXPECT_EQ(record.weekWPM, 40);
    EXPECT_EQ(record.weekChange, std::nullopt) << "59 presses are too few for a speed";
    history.days[daysAgo(13)] = practised(60, 1, 240);
    record = PracticeRecord(history, today, 300, utc);
    EXPECT_EQ(record.weekChange, -10);
    history.days[daysAgo(-1)] = practised(60, 60, 100, 99);
    EXPECT_EQ(PracticeRecord(history, today, 300, utc), record) << "a day to come is no part of it";
}

/// The same lesson against different pasts: 80 presses of "e" at 240 ms, which is 50 words per minute.
class Review : public testing::Test {
  protected:
    LessonResult result() const { return PracticeReview::review(lesson, before, rules, today, 300, utc); }

    FinishedLesson lesson{{{"e", {80, 4, 80, 80 * 240, 1}}}, 100, "qwerty", "e", std::nullopt};
    PracticeHistory before;
};

TEST_F(Review, GivesStarsForAccuracyForUsualSpeedAndForTheGoal) {
    before.days[today] = practised(199);
    LessonResult judged = result();
    EXPECT_EQ(judged.wpm, 50);
    EXPECT_EQ(judged.todaySeconds, 299);
    EXPECT_EQ(judged.stars, (std::vector<bool>{true, true, false}));

    before.days[today] = practised(200);
    before.days[daysAgo(1)] = practised(300, 60, 230);
    lesson.counts["e"].misses = 5;
    judged = result();
    EXPECT_EQ(judged.stars, (std::vector<bool>{false, false, true}));
    EXPECT_EQ(judged.streak, 2);

    before.days.erase(daysAgo(1));
    before.days[daysAgo(14)] = practised(300, 60, 230);
    EXPECT_TRUE(result().stars[1]) << "what is older than 14 days is not usual any more";
    lesson.counts["e"] = {80, 0, 0, 0, 1};
    EXPECT_FALSE(result().stars[1]) << "a paste has no speed, not even a first one";
}

TEST_F(Review, TellsTheBestNewsOnly) {
    EXPECT_EQ(result().news, std::nullopt) << "a first lesson has nothing to be compared with";

    before.days[daysAgo(3)] = practised(300, 60, 300, 49);
    EXPECT_EQ(result().news, LessonResult::News(LessonResult::PersonalBest{1}));

    before.days[daysAgo(8)] = practised(300, 60, 300, 60);
    EXPECT_EQ(result().news, LessonResult::News(LessonResult::Focus{"e", 50}));

    lesson.focus = "t";
    EXPECT_EQ(result().news, LessonResult::News(LessonResult::WeekBest{}));

    lesson.counts["e"].misses = 5;
    EXPECT_EQ(result().news, std::nullopt) << "a lesson typed with too many errors is no best";

    lesson.newLetter = "x";
    EXPECT_EQ(result().news, LessonResult::News(LessonResult::NewLetter{"x"}));
}

TEST(PracticeReview, NamesTheSlowestLetters) {
    const LetterCounts counts = {{"a", {9, 0, 3, 900, 1}},  {"b", {9, 0, 2, 9000, 1}},
                                 {"c", {9, 0, 3, 1200, 1}}, {"d", {9, 0, 3, 300, 1}},
                                 {" ", {9, 0, 9, 9000, 1}}, {"e", {9, 0, 3, 900, 1}}};
    EXPECT_EQ(PracticeReview::slowest(counts, 3), (std::vector<std::string>{"c", "a", "e"}));
}

TEST(PracticeReminder, RemindsAtTheTimesLeft) {
    EXPECT_EQ(PracticeReminder::minutes(1), std::vector<std::int64_t>{18 * 60});
    EXPECT_EQ(PracticeReminder::minutes(4), (std::vector<std::int64_t>{540, 720, 900, 1080}));
    EXPECT_TRUE(PracticeReminder::minutes(-1).empty());

    // The night to 25 October is an hour longer.
    const Instant noon = berlin.moment({.year = 2026, .month = 10, .day = 24, .hour = 12});
    const auto at = [](std::int64_t day, std::int64_t hour) {
        return berlin.moment({.year = 2026, .month = 10, .day = day, .hour = hour});
    };
    EXPECT_EQ(PracticeReminder::plan(noon, 2, false, 2, berlin),
              (std::vector<Instant>{at(24, 18), at(25, 9), at(25, 18)}));
    EXPECT_EQ(PracticeReminder::plan(noon, 2, true, 2, berlin),
              (std::vector<Instant>{at(25, 9), at(25, 18)}));
    EXPECT_TRUE(PracticeReminder::plan(noon, 0, false, 9, berlin).empty());
}

}  // namespace
}  // namespace tapcore

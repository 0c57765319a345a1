#include <gtest/gtest.h>

#include <stdexcept>

#include "app/practice/trainer.h"
#include "tests/app/practice/tents.h"

// Lesson after lesson without a screen: what is kept, under which day, and what is opened.

namespace tappora {
namespace {

using tapcore::Day;
using tapcore::LetterStats;
using tapcore::PracticeDay;

const Day saturday(2026, 9, 19), sunday(2026, 9, 20);

class Lessons : public testing::Test {
  protected:
    Trainer trainer(tapcore::LessonWish wish = {.words = 4}, tapcore::PracticeHistory history = {}) {
        return Trainer(
            {.model = std::make_shared<const tapcore::LetterModel>(tents()),
             .rules = tapcore::PracticeRules(40),
             .wish = std::move(wish),
             .layout = "qwerty"},
            std::move(history), 7, tapcore::Calendar("UTC"),
            {.today = [this] { return today; },
             .save =
                 [this](const PracticeDay& practised, const Day& day) {
                     if (isBroken) throw std::runtime_error("no room");
                     saved[day].merge(practised);
                     ++saves;
                 },
             .remember = [this](const std::string& key, std::int64_t opened) { remembered[key] = opened; }});
    }
    void type(Trainer& trainer, std::size_t characters, std::int64_t milliseconds = 300) {
        for (; characters > 0; --characters)
            trainer.press(std::string(*trainer.session().expected()), now += milliseconds);
    }
    void typeAll(Trainer& trainer, std::int64_t milliseconds = 300) {
        while (trainer.session().expected()) type(trainer, 1, milliseconds);
    }

    Day today = saturday;
    std::int64_t now = 5000;
    bool isBroken = false;
    int saves = 0;
    std::map<Day, PracticeDay> saved;
    std::map<std::string, std::int64_t> remembered;
};

TEST_F(Lessons, BelongToTheDayOfEachPress) {
    Trainer practice = trainer();
    ASSERT_EQ(practice.session().text().substr(0, 6), "tenet ") << "what the counts below are of";
    type(practice, 6);
    today = sunday;
    typeAll(practice);
    practice.save();
    ASSERT_EQ(saved.size(), 2U);
    const PracticeDay &before = saved[saturday], &after = saved[sunday];
    EXPECT_EQ(before.letters.at("t"), (LetterStats{2, 0, 1, 300, 1}));
    EXPECT_EQ(before.letters.at(" "), (LetterStats{1, 0, 1, 300, 1}));
    EXPECT_EQ(before.lettersOn("qwerty"), before.letters);
    EXPECT_EQ(before.seconds, 1);
    EXPECT_EQ(before.lessons, 0) << "finished on the day after";
    EXPECT_EQ(after.lessons, 1);
    EXPECT_EQ(after.layout, "qwerty");
    const auto characters = static_cast<std::int64_t>(practice.session().characters().size());
    EXPECT_EQ(tapcore::sumOf(before.letters).presses + tapcore::sumOf(after.letters).presses, characters);
    EXPECT_EQ(before.seconds + after.seconds, (characters - 1) * 300 / 1000) << "no part of a second is lost";
}

TEST_F(Lessons, KeepWhatIsShortOfASecondForTheNextSave) {
    Trainer practice = trainer();
    for (int i = 0; i < 10; ++i) {
        type(practice, 1, 450);
        practice.save();
    }
    EXPECT_EQ(saves, 10);
    EXPECT_EQ(saved[saturday].seconds, 9 * 450 / 1000);
    EXPECT_EQ(practice.todaySeconds(), 9 * 450 / 1000);
    EXPECT_FALSE(practice.hasUnsaved());
    practice.save();
    EXPECT_EQ(saves, 10) << "nothing new";
}

TEST_F(Lessons, LoseNothingWhenASaveFails) {
    Trainer practice = trainer();
    type(practice, 3);
    isBroken = true;
    EXPECT_THROW(practice.save(), std::runtime_error);
    EXPECT_TRUE(practice.hasUnsaved());
    type(practice, 2);
    today = sunday;
    type(practice, 1);
    EXPECT_THROW(practice.save(), std::runtime_error);
    isBroken = false;
    practice.save();
    EXPECT_EQ(tapcore::sumOf(saved[saturday].letters).presses, 5);
    EXPECT_EQ(tapcore::sumOf(saved[sunday].letters).presses, 1);
    EXPECT_FALSE(practice.hasUnsaved());
}

TEST_F(Lessons, CountASpeedAsBestOnlyWhenEnoughWasTyped) {
    Trainer few = trainer({.words = 4});
    typeAll(few);
    few.save();
    EXPECT_EQ(saved[saturday].best, 0);
    EXPECT_EQ(saved[saturday].lessons, 1);
    EXPECT_EQ(few.result()->wpm, 40);
    Trainer many = trainer({.words = 30});
    typeAll(many, 240);
    many.save();
    EXPECT_EQ(saved[saturday].best, 50);
    EXPECT_EQ(saved[saturday].bests, (std::map<std::string, std::int64_t>{{"qwerty", 50}}));
    EXPECT_EQ(saved[saturday].lessons, 2);
}

TEST_F(Lessons, GoOnOnlyFromTheirEnd) {
    Trainer practice = trainer();
    practice.nextLesson();
    EXPECT_EQ(practice.lessonNumber(), 1);
    typeAll(practice);
    practice.press("x", now);
    EXPECT_TRUE(practice.result());
    practice.nextLesson();
    EXPECT_EQ(practice.lessonNumber(), 2);
    EXPECT_FALSE(practice.result());
    EXPECT_EQ(practice.session().position(), 0U);
    EXPECT_EQ(practice.total("n").days, 1) << "two lessons of one day";
}

TEST_F(Lessons, OpenLettersForGood) {
    tapcore::PracticeHistory history;
    for (const Day& day : {Day(2026, 9, 1), Day(2026, 9, 2)})
        for (const char* letter : {"e", "n", "i", "t", "a", "r"})
            history.days[day].add("qwerty", letter, {60, 0, 60, 60 * 200, 1});
    Trainer practice = trainer({.words = 4}, history);
    EXPECT_TRUE(practice.isOpen("l"));
    EXPECT_FALSE(practice.isOpen("s"));
    EXPECT_TRUE(remembered.empty()) << "only once something is saved";
    practice.save();
    EXPECT_EQ(remembered, (std::map<std::string, std::int64_t>{{"practice.opened.en.qwerty", 7}}));

    // Forgotten since, but open all the same.
    Trainer later = trainer({.words = 4, .lettersOpened = 7});
    EXPECT_TRUE(later.isOpen("l"));
    EXPECT_EQ(later.state("l"), tapcore::LetterState::learning);
    EXPECT_EQ(later.state("s"), tapcore::LetterState::notStarted);
    remembered.clear();
    later.save();
    EXPECT_TRUE(remembered.empty()) << "nothing new";
}

}  // namespace
}  // namespace tappora

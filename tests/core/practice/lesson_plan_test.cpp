#include "core/practice/lesson_plan.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tapcore {
namespace {

using Letters = std::vector<std::string>;

class LessonPlanTest : public testing::Test {
  protected:
    LessonPlan plan(const LessonWish& wish, const LetterCounts& practised = {}) const {
        SeededRandom rng(1);
        return planLesson(*english, PracticeRules(40), practised, wish, rng);
    }
    static std::ptrdiff_t holding(const Letters& words, const std::string& letter) {
        return std::count_if(words.begin(), words.end(),
                             [&](const std::string& word) { return word.find(letter) != std::string::npos; });
    }

    const std::shared_ptr<const LetterModel> english = LetterModel::load("en", RESOURCES "/Practice");
};

TEST_F(LessonPlanTest, StressesWhatTheRulesSay) {
    LetterCounts practised;
    for (const char* letter : {"e", "a", "t", "s", "l"}) practised[letter] = {60, 0, 60, 12000, 2};
    const LessonPlan first = plan({.words = 30}, practised);
    EXPECT_EQ(first.open, (Letters{"e", "a", "t", "s", "r", "l"}));
    EXPECT_EQ(first.stressed, Letters{"r"});
    EXPECT_EQ(first.words.size(), 30U);
    EXPECT_GE(holding(first.words, "r"), 20);
    EXPECT_EQ(plan({.words = 30}, practised).words, first.words);
}

TEST_F(LessonPlanTest, KeepsOpenWhatWasOpen) {
    const LessonPlan kept = plan({.lettersOpened = 9, .digitsOpened = 5});
    EXPECT_EQ(kept.open.size(), 9U);
    EXPECT_EQ(kept.openDigits.size(), 5U);
    EXPECT_EQ(kept.openMarks.size(), 3U);
}

TEST_F(LessonPlanTest, GivesLettersAskedForEqualShares) {
    const LessonPlan asked = plan({.words = 30, .letters = {"q", "z", "e"}});
    EXPECT_EQ(asked.words.size(), 30U);
    EXPECT_GE(holding(asked.words, "q"), 6) << "which takes letters that are not open";
    EXPECT_GE(holding(asked.words, "z"), 6);
    EXPECT_EQ(asked.open.size(), 6U);
    EXPECT_NE(asked.words[0].find('q'), std::string::npos);
    EXPECT_NE(asked.words[1].find('z'), std::string::npos);
}

TEST_F(LessonPlanTest, HoldsOnlyOpenLettersUnlessOthersWereAskedFor) {
    const auto german = LetterModel::load("de", RESOURCES "/Practice");
    for (std::uint64_t seed = 0; seed < 40; ++seed) {
        SeededRandom rng(seed);
        const LessonPlan few =
            planLesson(*german, PracticeRules(40), {}, {.words = 5, .lettersOpened = 28}, rng);
        for (const std::string& word : few.words)
            for (std::size_t closed = 28; closed < german->order.size(); ++closed)
                EXPECT_EQ(word.find(german->order[closed]), std::string::npos) << seed << ' ' << word;
        SeededRandom again(seed);
        const LessonPlan asked = planLesson(*english, PracticeRules(40), {},
                                            {.words = 4, .letters = {"d"}, .lettersOpened = 20}, again);
        EXPECT_GE(holding(asked.words, "d"), 1) << seed;
        EXPECT_EQ(holding(asked.words, "q"), 0) << "which the open letters do without";
    }
}

TEST_F(LessonPlanTest, BorrowsLettersForWordsThatNeedThemAlone) {
    for (const char* language : {"de", "uk"}) {
        const auto model = LetterModel::load(language, RESOURCES "/Practice");
        for (const std::string& letter : model->order)
            for (std::uint64_t seed = 0; seed < 4; ++seed) {
                SeededRandom rng(seed);
                const LessonPlan asked =
                    planLesson(*model, PracticeRules(40), {}, {.words = 5, .letters = {letter}}, rng);
                EXPECT_GE(holding(asked.words, letter), 1) << language << ' ' << letter << ' ' << seed;
                for (const std::string& word : asked.words)
                    for (std::size_t i = 6; i < model->order.size(); ++i)
                        EXPECT_TRUE(holding({word}, letter) || !holding({word}, model->order[i])) << word;
            }
    }
}

TEST_F(LessonPlanTest, MixesInOpenDigitsAndMarksAlone) {
    const LessonPlan mixed =
        plan({.words = 200, .extras = {.capitals = true, .punctuation = true, .digits = true}});
    EXPECT_EQ(mixed.words.size(), 200U);
    for (const std::string& word : mixed.words)
        EXPECT_EQ(word.find_first_not_of("eatsrlEATSRL123,.'"), std::string::npos) << word;
}

}  // namespace
}  // namespace tapcore

#include "core/practice/practice_rules.h"

#include <gtest/gtest.h>

namespace tapcore {
namespace {

using Letters = std::vector<std::string>;

const PracticeRules rules(40);

/// A letter learned by the rules: 60 timed presses at 300 ms, of which 57 in 60 are right, on two days.
constexpr LetterStats atTheMark{57, 3, 60, 18000, 2};

LetterStats changed(LetterStats stats, std::int64_t LetterStats::*field, std::int64_t by) {
    stats.*field += by;
    return stats;
}

TEST(PracticeRules, TakesTheTargetSpeedIntoItsBounds) {
    EXPECT_EQ(PracticeRules(5).targetWPM(), 10);
    EXPECT_EQ(PracticeRules(400).targetWPM(), 150);
    EXPECT_EQ(rules.targetMilliseconds(), 300);
    EXPECT_EQ(PracticeRules(70).targetMilliseconds(), 171);
}

TEST(PracticeRules, JudgesALetterAtTheVeryMark) {
    EXPECT_TRUE(rules.learned(atTheMark));
    const struct {
        const char* what;
        LetterStats stats;
        bool meetsMark;
    } cases[] = {
        {"one timed press short", {59, 0, 59, 59, 2}, false},
        {"a millisecond too slow", changed(atTheMark, &LetterStats::milliseconds, 60), false},
        {"slower by less than a whole millisecond", changed(atTheMark, &LetterStats::milliseconds, 59), true},
        {"a miss too many", changed(atTheMark, &LetterStats::misses, 1), false},
        {"practised on one day", changed(atTheMark, &LetterStats::days, -1), true},
        {"never practised", {}, false},
    };
    for (const auto& [what, stats, meetsMark] : cases) {
        EXPECT_EQ(rules.meetsMark(stats), meetsMark) << what;
        EXPECT_EQ(rules.learned(stats), meetsMark && stats.days >= 2) << what;
    }
    PracticeRules withoutSamples(40);
    withoutSamples.samples = 0;
    EXPECT_FALSE(withoutSamples.meetsMark({9, 0, 0, 0, 2}));
    EXPECT_EQ((LetterStats{.timed = -2, .milliseconds = 601}).averageMilliseconds(), -300)
        << "only of none is there no mean";
}

TEST(PracticeRules, TellsStatesApart) {
    const struct {
        const char* what;
        bool open;
        LetterStats total, recent;
        LetterState state;
    } cases[] = {
        {"closed, however well typed", false, atTheMark, atTheMark, LetterState::notStarted},
        {"open and never typed", true, {}, {}, LetterState::learning},
        {"learned, little typed of late", true, atTheMark, {10, 49, 59, 59000, 1}, LetterState::learned},
        {"learned and still so", true, atTheMark, atTheMark, LetterState::learned},
        {"lately slow", true, atTheMark, {60, 0, 60, 18060, 1}, LetterState::slipping},
        {"lately often missed", true, atTheMark, {60, 15, 60, 6000, 1}, LetterState::slipping},
    };
    for (const auto& [what, open, total, recent, state] : cases)
        EXPECT_EQ(rules.state(open, total, recent), state) << what;
    EXPECT_EQ(letterStates.of(LetterState::notStarted), "notStarted");
    EXPECT_EQ(letterStates.find("slipping"), LetterState::slipping);
    EXPECT_EQ(letterStates.find("Learned"), std::nullopt);
}

TEST(PracticeRules, ShowsProgressFullOnlyWhenLearned) {
    EXPECT_EQ(rules.progress(atTheMark), 1.0);
    EXPECT_EQ(rules.progress(changed(atTheMark, &LetterStats::days, -1)), 0.95);
    EXPECT_EQ(rules.progress({}), 0.0);
    EXPECT_EQ(rules.progress({30, 0, 30, 30 * 600, 1}), 0.4 * 0.5 + 0.6 * 0.5);
    EXPECT_EQ(rules.progress({30, 30, 30, 30 * 100, 1}), 0.4 * 0.5 + 0.6 * (0.5 / 0.95));
}

TEST(PracticeRules, OpensOneLetterMoreForAsLongAsAllAreLearned) {
    const Letters order = {"e", "t", "a", "o", "i", "n", "s", "r"};
    const LetterCounts firstTwo = {{"e", atTheMark}, {"t", atTheMark}};
    LetterCounts firstSeven;
    for (std::size_t i = 0; i < 7; ++i) firstSeven[order[i]] = atTheMark;
    const struct {
        const char* what;
        LetterCounts stats;
        std::optional<std::int64_t> first;
        std::int64_t atLeast;
        std::size_t opened;
    } cases[] = {
        {"six at the beginning", {}, std::nullopt, 0, 6},
        {"two learned of six", firstTwo, std::nullopt, 0, 6},
        {"two learned of two", firstTwo, 2, 0, 3},
        {"all learned but the last", firstSeven, std::nullopt, 0, 8},
        {"from none, over what is learned", firstTwo, 0, 0, 3},
        {"as many as were open", {}, std::nullopt, 7, 7},
        {"more than there are", {}, 99, 0, 8},
        {"fewer than none", {}, -5, -5, 1},
    };
    for (const auto& [what, stats, first, atLeast, opened] : cases)
        EXPECT_EQ(rules.open(order, stats, first, atLeast),
                  Letters(order.begin(), order.begin() + static_cast<std::ptrdiff_t>(opened)))
            << what;
}

TEST(PracticeRules, StressesTheLetterThatNeedsItMost) {
    const LetterStats slow{60, 0, 60, 60 * 500, 2};
    const LetterStats slower{60, 0, 60, 60 * 501, 2};
    const LetterStats slowAndFew{59, 0, 59, 59 * 500, 2};
    const LetterStats fastAndFew{59, 0, 59, 59 * 100, 2};
    const struct {
        const char* what;
        LetterCounts stats;
        const char* focus;
    } cases[] = {
        {"the last when all are learned", {{"a", atTheMark}, {"b", atTheMark}, {"c", atTheMark}}, "c"},
        {"the only one not learned", {{"a", atTheMark}, {"b", slow}, {"c", atTheMark}}, "b"},
        {"the slowest", {{"a", slow}, {"b", slower}, {"c", slow}}, "b"},
        {"the earliest of equals", {{"a", slow}, {"b", slow}, {"c", slow}}, "a"},
        {"one that lacks presses before a slower one", {{"a", slower}, {"b", fastAndFew}, {"c", slow}}, "b"},
        {"the slowest of those that lack presses",
         {{"a", fastAndFew}, {"b", slowAndFew}, {"c", slower}},
         "b"},
        {"one never typed before one hardly typed", {{"a", slowAndFew}, {"b", slow}}, "c"},
    };
    for (const auto& [what, stats, focus] : cases)
        EXPECT_EQ(rules.focus({"a", "b", "c"}, stats), focus) << what;
    EXPECT_EQ(rules.focus({}, {}), std::nullopt);
}

TEST(PracticeRules, PicksSpeeds) {
    EXPECT_EQ(PracticeRules::wpm(0), 0);
    EXPECT_EQ(PracticeRules::wpm(240), 50);
    EXPECT_EQ(PracticeRules::wpm(299), 40);
    EXPECT_EQ(PracticeRules::wpm(std::numeric_limits<std::int64_t>::max()), 0);
    EXPECT_EQ(PracticeRules::speedTag(45), 45);
    EXPECT_EQ(PracticeRules::speedTag(50), 0);
    EXPECT_EQ(PracticeRules::speed(0, 45), 50);
    EXPECT_EQ(PracticeRules::speed(0, 72), 72);
    EXPECT_EQ(PracticeRules::speed(35, 72), 35);
}

TEST(LetterStats, RefusesASumBeyond64Bits) {
    LetterStats full{std::numeric_limits<std::int64_t>::max(), 0, 0, 0, 0};
    EXPECT_DEATH(full += LetterStats({1, 0, 0, 0, 0}), "does not fit into 64 bits");
}

}  // namespace
}  // namespace tapcore

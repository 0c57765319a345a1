#include "core/practice/own_letters.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tapcore {
namespace {

using Letters = std::vector<std::string>;

TEST(OwnLetters, AreThoseThatKeysPrintUnshiftedOnceThereAreEnough) {
    const Legends legends = {
        {0, {"a", "A"}}, {1, {"s", "e"}}, {10, {"a", "ä"}}, {83, {"1"}}, {36, {"return"}}};
    const Tally::KeyCounts counts = {{0, 400}, {1, 300}, {10, 300}, {36, 500}, {83, 500}};
    EXPECT_EQ(ownLetters(counts, legends, {"a", "e", "s"}), (OwnLetters{{"a", 700}, {"s", 300}}));
    EXPECT_EQ(ownLetters(counts, legends, {"a", "1"}), std::nullopt) << "700, with the number pad left out";
}

TEST(OwnLetters, ChooseTheLetterThatCostsMost) {
    struct Case {
        const char* what;
        LetterCounts practised;
        OwnLetters own;
        std::optional<std::string> chosen;
    };
    const LetterStats slow{60, 0, 60, 60 * 500, 1}, fast{60, 0, 60, 60 * 200, 2};
    const Case cases[] = {
        {"nothing practised: the one typed most", {}, {{"e", 10}, {"a", 30}}, "a"},
        {"how long it takes counts as much",
         {{"e", slow}, {"a", fast}, {"t", slow}},
         {{"t", 9}, {"e", 8}},
         "t"},
        {"a learned letter waits", {{"e", slow}, {"a", fast}, {"t", slow}}, {{"a", 90}, {"e", 1}}, "e"},
        {"unless all are learned", {{"e", fast}, {"a", fast}, {"t", fast}}, {{"a", 9}, {"e", 1}}, "a"},
        {"none of them typed", {}, {{"z", 1000}}, std::nullopt},
    };
    for (const Case& each : cases)
        EXPECT_EQ(costliest(PracticeRules(40), {"e", "a", "t"}, each.practised, each.own), each.chosen)
            << each.what;
}

TEST(OwnLetters, MakeWordsOfWhatIsTypedOftenAndLeaveNoWordImpossible) {
    const auto model = LetterModel::load("en", RESOURCES "/Practice");
    const LetterModel mine = weighed(*model, {{"e", 10}, {"s", 900}});
    const auto count = [](const LetterModel& from, char letter) {
        SeededRandom rng(3);
        std::ptrdiff_t sum = 0;
        for (const std::string& word : from.lesson({"e", "a", "t", "s", "r", "l"}, std::nullopt, 200, rng))
            sum += std::count(word.begin(), word.end(), letter);
        return sum;
    };
    EXPECT_GT(count(mine, 's'), 2 * count(*model, 's'));
    EXPECT_LT(count(mine, 'a'), count(*model, 'a') * 2 / 3);
    EXPECT_GT(count(mine, 'a'), 0);
}

}  // namespace
}  // namespace tapcore

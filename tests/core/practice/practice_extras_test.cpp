#include "core/practice/practice_extras.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

#include "core/foundation/characters.h"

namespace tapcore {
namespace {

using Words = std::vector<std::string>;

Words applied(const PracticeExtras& extras, const Words& words, const Words& digits, const Words& marks,
              std::optional<std::string> digitFocus = {}, std::optional<std::string> markFocus = {}) {
    SeededRandom rng(11);
    return extras.apply(words, digits, digitFocus, marks, markFocus, rng);
}

std::string joined(const Words& words) { return std::accumulate(words.begin(), words.end(), std::string()); }

std::ptrdiff_t countOf(const Words& words, const std::string& character) {
    const std::string all = joined(words);
    const auto each = characters(all);
    return std::count(each.begin(), each.end(), character);
}

TEST(PracticeExtras, LeaveWordsAloneUnlessTheyAreOn) {
    const Words words = {"tent", "ate"};
    SeededRandom rng(1);
    EXPECT_EQ(PracticeExtras().apply(words, {"1"}, {}, {","}, {}, rng), words);
    EXPECT_EQ(rng, SeededRandom(1));
    EXPECT_EQ(applied({false, true, true}, words, {}, {}), words);
}

TEST(PracticeExtras, BeginSentencesWithCapitals) {
    const Words words = applied({true, true, false}, Words(200, "étant"), {}, {"."});
    EXPECT_EQ(words[0].substr(0, 2), "É");
    for (std::size_t i = 1; i < words.size(); ++i) {
        if (words[i - 1].back() == '.') {
            EXPECT_EQ(words[i].substr(0, 2), "É") << i;
        }
    }
    EXPECT_LT(countOf(words, "É"), 150);
    EXPECT_EQ(applied({true, false, false}, {"ßa"}, {}, {}), Words{"ßa"});
}

TEST(PracticeExtras, PutMarksWhereOneWritesThem) {
    const struct {
        const char* mark;
        Words open;
        const char* word;
    } cases[] = {
        {",", {}, "né, "}, {"'", {}, "n'é "},     {"-", {}, "n-é "},     {"\"", {}, "\"né\" "},
        {"(", {}, "(né "}, {"(", {")"}, "(né) "}, {")", {"("}, "(né) "}, {":", {}, "né: "},
    };
    for (const auto& [mark, others, expected] : cases) {
        Words open = {mark};
        open.insert(open.end(), others.begin(), others.end());
        const Words words = applied({false, true, false}, Words(40, "né"), {}, open, {}, mark);
        const std::string wanted(expected, std::string(expected).size() - 1);
        EXPECT_GT(std::count(words.begin(), words.end(), wanted), 4) << wanted;
        EXPECT_GT(std::count(words.begin(), words.end(), "né"), 10) << wanted;
    }
}

TEST(PracticeExtras, StressAFocusAndUseOpenCharactersOnly) {
    const Words words =
        applied({true, true, true}, Words(400, "ten"), {"1", "2", "3"}, {",", ".", "-"}, "2", "-");
    EXPECT_EQ(words.size(), 400U);
    EXPECT_EQ(joined(words).find_first_not_of("tTen123,.-"), std::string::npos);
    EXPECT_GT(countOf(words, "2"), countOf(words, "1") + countOf(words, "3"));
    EXPECT_GT(countOf(words, "-"), countOf(words, ",") + countOf(words, "."));
}

TEST(PracticeExtras, GiveTheSameLessonFromASeed) {
    EXPECT_EQ(
        applied({true, true, true}, {"tent", "ate", "neat", "tan", "eat", "net", "ten", "ant", "tea", "nat"},
                {"1", "2"}, {",", "."}),
        (Words{"Tent.", "Ate.", "1211", "tan.", "Eat", "Net", "ten", "ant", "tea", "nat"}));
}

}  // namespace
}  // namespace tapcore

#include "core/practice/letter_model.h"

#include <gtest/gtest.h>

#include "tests/support/temporary_folder.h"

namespace tapcore {
namespace {

using Letters = std::vector<std::string>;

constexpr std::string_view someWords = R"({
    "order": ["e", "t", "a", "n", "é"],
    "transitions": {
        "^^": {"t": 5, "a": 3, "e": 2, "n": 4, "é": 1},
        "^t": {"e": 4, "a": 3}, "^a": {"t": 3, "n": 4}, "^e": {"a": 2, "n": 1}, "^n": {"e": 3, "a": 1}, "^é": {"t": 2},
        "te": {"n": 5, "a": 2, "$": 4}, "ta": {"n": 3, "t": 1, "$": 1}, "at": {"e": 4, "$": 5, "é": 1},
        "an": {"e": 2, "t": 3, "$": 3}, "ea": {"t": 3, "n": 1, "$": 1}, "en": {"t": 3, "e": 1, "$": 4},
        "ne": {"t": 2, "a": 1, "$": 2}, "na": {"t": 2, "$": 1}, "nt": {"e": 1, "a": 1, "$": 6},
        "et": {"e": 1, "$": 3}, "tt": {"e": 1}, "ét": {"é": 1, "a": 1}, "té": {"$": 3}}})";

std::string joined(const std::vector<std::string>& words) {
    std::string all;
    for (const std::string& word : words) all += all.empty() ? word : " " + word;
    return all;
}

std::string lesson(const Letters& open, const std::optional<std::string>& focus, std::int64_t count,
                   std::uint64_t seed) {
    SeededRandom rng(seed);
    return joined(LetterModel::parse("xx", someWords).lesson(open, focus, count, rng));
}

TEST(LetterModel, MakesTheSameWordsFromASeedForEver) {
    const Letters plain = {"e", "t", "a", "n"};
    const Letters all = {"e", "t", "a", "n", "é"};
    EXPECT_EQ(lesson(plain, {}, 12, 0), "teat eat tat net tatent ten net ant eat nat teat ate");
    EXPECT_EQ(lesson(plain, {}, 12, 1), "net net ent net tent ane ant ten net tent eate ate");
    EXPECT_EQ(lesson(plain, {}, 12, 2026), "ten tent eat ean eatent netent net atent nat tent tan neat");
    EXPECT_EQ(lesson(all, "é", 9, 7), "étant étaten tent eaté étant eat étan été tante");
    EXPECT_EQ(lesson(all, "é", 9, 18446744073709551615U), "étante été état étanea até ten até été tene");
}

TEST(LetterModel, FinishesALessonThatCannotHoldItsFocus) {
    EXPECT_EQ(lesson({"e", "t", "a", "n"}, "q", 6, 7), "eat eneateat neten ant eat net");
}

TEST(LetterModel, HasNoLessonWhereLettersLeadNowhere) {
    EXPECT_EQ(lesson({"e", "a"}, {}, 6, 7), "");
    EXPECT_EQ(lesson({}, {}, 6, 7), "");
    EXPECT_EQ(lesson({"e", "t", "a", "n"}, {}, 0, 7), "");
    EXPECT_EQ(lesson({"e", "t", "a", "n"}, {}, -1, 7), "");
}

TEST(LetterModel, DrawsOnceForEachLetterAndNeverForNothing) {
    const auto state = [](std::string_view transitions, int draws) {
        const auto model =
            LetterModel::parse("xx", R"({"order": [], "transitions": )" + std::string(transitions) + "}");
        SeededRandom rng(5), expected(5);
        const auto word = model.word({"a"}, rng);
        for (int i = 0; i < draws; ++i) expected.next();
        EXPECT_EQ(rng, expected) << transitions;
        return word;
    };
    const std::string single =
        R"({"^^": {"a": 1}, "^a": {"a": 1}, "aa": {"a": 1, "$": 9223372036854775806}})";
    EXPECT_EQ(state(single, 4), "aaa");
    // Nothing is added up that cannot be drawn.
    EXPECT_EQ(state(R"({"^^": {"a": 1, "$": 9223372036854775807}, "^a": {"a": 1, "$": 9223372036854775807},
                        "aa": {"a": 1, "$": 9223372036854775806}})",
                    4),
              "aaa");
    EXPECT_EQ(state(R"({"^^": {"a": 0, "$": 7}})", 0), std::nullopt);
    EXPECT_EQ(state(R"({"^^": {"a": -3}})", 0), std::nullopt);
    EXPECT_EQ(state(R"({"^^": {"a": 1}, "^a": {"$": 5}})", 40), std::nullopt);
    // A word may not go past eight letters, so it fails where none ends there.
    EXPECT_EQ(state(R"({"^^": {"a": 1}, "^a": {"a": 1}, "aa": {"a": 1}})", 8 * 40), std::nullopt);
}

TEST(LetterModel, TakesNegativeCountsOffTheNumberDrawn) {
    const auto model = LetterModel::parse(
        "xx",
        R"({"order": [], "transitions": {"^^": {"a": -9223372036854775807, "b": 9223372036854775807, "c": 2},
                 "^b": {"c": 1}, "^c": {"c": 1}, "cc": {"$": 1, "c": 1}, "bc": {"c": 1}}})");
    SeededRandom rng(1);
    for (int i = 0; i < 20; ++i) EXPECT_EQ(model.word({"a", "b", "c"}, rng)->front(), 'c');
}

TEST(LetterModel, IsLoadedOnceAndNeverFromAMalformedFile) {
    const TemporaryFolder temporary;
    const std::filesystem::path& folder = temporary.path();
    EXPECT_TRUE(LetterModel::available(folder).empty());
    temporary.put("xx.json", someWords);
    temporary.put("bad.json", "{");
    temporary.put("notes.txt", "");
    const auto model = LetterModel::load("xx", folder);
    ASSERT_TRUE(model);
    EXPECT_EQ(*model, LetterModel::parse("xx", someWords));
    EXPECT_EQ(LetterModel::load("xx", folder), model);
    for (const std::string& language :
         std::vector<std::string>{"bad", "yy", "", "../" + folder.filename().string() + "/xx"})
        EXPECT_FALSE(LetterModel::load(language, folder));
    EXPECT_EQ(LetterModel::available(folder), (std::vector<std::string>{"bad", "xx"}));
}

}  // namespace
}  // namespace tapcore

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "core/foundation/characters.h"
#include "core/practice/letter_model.h"

namespace tapcore {
namespace {

using Letters = std::vector<std::string>;

const std::filesystem::path folder = RESOURCES "/Practice";

Letters firstLetters(const LetterModel& model, std::size_t count) {
    return {model.order.begin(), model.order.begin() + static_cast<std::ptrdiff_t>(count)};
}

bool isSpelledWith(const std::string& word, const Letters& letters) {
    const auto all = characters(word);
    return all.size() >= 3 && all.size() <= 8 && std::all_of(all.begin(), all.end(), [&](std::string_view c) {
               return std::find(letters.begin(), letters.end(), c) != letters.end();
           });
}

class LanguageModel : public testing::TestWithParam<std::string> {
  protected:
    const std::shared_ptr<const LetterModel> model = LetterModel::load(GetParam(), folder);
};

TEST_P(LanguageModel, MakesManyWordsOfItsFirstSixLetters) {
    ASSERT_TRUE(model);
    SeededRandom rng(1);
    const auto words = model->lesson(firstLetters(*model, 6), std::nullopt, 200, rng);
    EXPECT_EQ(words.size(), 200U);
    EXPECT_GE(std::set(words.begin(), words.end()).size(), 60U);
}

TEST_P(LanguageModel, UsesOpenLettersOnlyAndStressesEachLetterAsItOpens) {
    ASSERT_TRUE(model);
    SeededRandom rng(2);
    for (std::size_t count = 6; count <= model->order.size(); ++count) {
        const Letters open = firstLetters(*model, count);
        const auto words = model->lesson(open, open.back(), 60, rng);
        ASSERT_EQ(words.size(), 60U);
        for (const std::string& word : words)
            EXPECT_TRUE(isSpelledWith(word, open)) << word << ", " << open.back();
        EXPECT_GE(std::count_if(words.begin(), words.end(),
                                [&](auto& word) { return word.find(open.back()) != std::string::npos; }),
                  20)
            << open.back();
    }
}

TEST_P(LanguageModel, TeachesEachOfItsLettersOnce) {
    ASSERT_TRUE(model);
    EXPECT_EQ(std::set(model->order.begin(), model->order.end()).size(), model->order.size());
    for (const auto& [context, counts] : model->transitions)
        for (const auto& [next, count] : counts) {
            EXPECT_GT(count, 0) << context << next;
            EXPECT_TRUE(next == "$" || std::count(model->order.begin(), model->order.end(), next))
                << context << next;
        }
}

INSTANTIATE_TEST_SUITE_P(Shipped, LanguageModel, testing::ValuesIn(LetterModel::available(folder)),
                         [](const auto& named) { return named.param; });

TEST(LanguageModels, GiveTheSameLessonFromASeed) {
    const auto english = LetterModel::load("en", folder);
    ASSERT_TRUE(english);
    SeededRandom first(1), second(2026);
    EXPECT_EQ(english->lesson(firstLetters(*english, 7), "n", 12, first),
              (Letters{"lent", "anna", "reater", "annes", "enter", "stras", "neste", "ent", "ate", "trantare",
                       "sna", "terates"}));
    EXPECT_EQ(english->lesson(firstLetters(*english, 7), "n", 6, second),
              (Letters{"snell", "nestrear", "reasser", "san", "tanter", "ste"}));
}

TEST(LanguageModels, AreThoseOfSixLanguages) {
    EXPECT_EQ(LetterModel::available(folder), (Letters{"de", "en", "es", "fr", "ru", "uk"}));
}

}  // namespace
}  // namespace tapcore

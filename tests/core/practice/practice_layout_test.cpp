#include "core/practice/practice_layout.h"

#include <gtest/gtest.h>

namespace tapcore {
namespace {

const PracticeLayout::LegendsByLayout legends = {
    {"dvorak", {{0, {"a", "A"}}, {1, {"o", "O"}}, {2, {"e", "E"}}}},
    {"neo2", {{0, {"u", "U"}}, {2, {"a", "A"}}, {3, {"e", "E"}}, {8, {"ä", "Ä"}}}},
    {"qwerty", {{0, {"a", "A"}}, {1, {"s", "S"}}, {14, {"e", "E"}}, {50, {"`", "~"}}, {7, {}}}},
    {"qwertz", {{0, {"a", "A"}}, {14, {"e", "E"}}, {39, {"ä", "Ä"}}}},
};

TEST(PracticeLayout, TakesTheLayoutSetElseTheKeyboardsElseOneThatFits) {
    const struct {
        const char* what;
        std::vector<std::string> letters;
        const char* chosen;
        PracticeLayout::LayoutByLanguage settings;
        const char* picked;
    } cases[] = {
        {"the keyboard's own", {"a", "e"}, "qwerty", {}, "qwerty"},
        {"the one set, though it does not fit", {"ä"}, "qwerty", {{"de", "dvorak"}}, "dvorak"},
        {"one set for another language", {"a", "e"}, "qwerty", {{"fr", "dvorak"}}, "qwerty"},
        {"one set that is gone", {"a", "e"}, "qwerty", {{"de", "bepo"}}, "qwerty"},
        {"the one most like the keyboard's own", {"a", "ä"}, "qwerty", {}, "qwertz"},
        {"the keyboard's own when none does", {"ж"}, "qwerty", {}, "qwerty"},
        {"one that fits for a keyboard not known", {"a", "e"}, "", {}, "dvorak"},
    };
    for (const auto& [what, letters, chosen, settings, picked] : cases)
        EXPECT_EQ(PracticeLayout::pick("de", letters, chosen, settings, legends), picked) << what;
    EXPECT_EQ(PracticeLayout::choices({"a", "s"}, legends), (std::vector<std::string>{"own", "qwerty"}));
}

TEST(PracticeLayout, KeepsOneChoiceForALanguage) {
    const PracticeLayout::LayoutByLanguage one = PracticeLayout::setting("qwertz", "de", {{"fr", "azerty"}});
    EXPECT_EQ(one, (PracticeLayout::LayoutByLanguage{{"de", "qwertz"}, {"fr", "azerty"}}));
    EXPECT_EQ(PracticeLayout::setting("own", "de", one),
              (PracticeLayout::LayoutByLanguage{{"fr", "azerty"}}));
}

TEST(KeyStroke, PrefersTheKeyWithoutShiftAndNeverTheNumberPad) {
    const Legends french = {
        {18, {"&", "1"}}, {83, {"1"}}, {41, {"m", "M"}}, {46, {",", "?"}}, {47, {";", ","}}};
    EXPECT_EQ(KeyStroke::of("1", french), (KeyStroke{18, true}));
    EXPECT_EQ(KeyStroke::of(",", french), (KeyStroke{46, false}));
    EXPECT_EQ(KeyStroke::of("M", french), (KeyStroke{41, true}));
    EXPECT_EQ(KeyStroke::of(" ", french), (KeyStroke{49, false}));
    EXPECT_EQ(KeyStroke::of("ê", french), std::nullopt);
}

}  // namespace
}  // namespace tapcore

#include "core/counting/chords.h"

#include <gmock/gmock.h>

#include "core/counting/key_face.h"

namespace tapcore {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Modifiers, ReadTheirWordsInAnyOrder) {
    const struct {
        std::string_view text;
        std::optional<Modifiers> modifiers;
    } cases[] = {{"cmd+ctrl", Modifiers{Modifiers::control, Modifiers::command}},
                 {"ctrl++cmd", Modifiers{Modifiers::control, Modifiers::command}},
                 {"+fn+fn", Modifiers{Modifiers::function}},
                 {"", {}},
                 {"+", {}},
                 {"Ctrl", {}},
                 {"ctrl +cmd", {}},
                 {"ctrl+alt", {}}};
    for (const auto& [text, modifiers] : cases) EXPECT_EQ(Modifiers::parse(text), modifiers) << text;
    EXPECT_EQ(Modifiers(31).name(), "ctrl+opt+shift+cmd+fn");
    EXPECT_EQ(Modifiers(0xE1).name(), "ctrl");
    EXPECT_EQ(Modifiers{}.name(), "");
}

TEST(Modifiers, MakeAChordWithControlOptionOrCommand) {
    for (int raw = 0; raw < 32; ++raw)
        EXPECT_EQ(Modifiers(static_cast<std::uint8_t>(raw)).isChord(), raw % 4 != 0 || raw % 16 >= 8) << raw;
}

const Legends legends = {{0, {"a", "A"}}, {1, {"s", "S"}}, {36, {"return"}}, {49, {"space"}},
                         {96, {"F5"}},    {50, {}},        {24, {"´", "`"}}, {27, {"ß", "?"}}};

TEST(Chords, NameKeysByTheirFirstLegend) {
    EXPECT_EQ(Chords::name(0, legends), "A");
    EXPECT_EQ(Chords::name(27, legends), "SS");
    EXPECT_EQ(Chords::name(96, legends), "F5");
    EXPECT_EQ(Chords::name(50, legends), "key 50");
    EXPECT_EQ(Chords::name(105, {}), "key 105");
    EXPECT_THAT(Chords::keys({Modifiers(31), 1}, legends), ElementsAre("⌃", "⌥", "⇧", "⌘", "fn", "S"));
}

TEST(Chords, JoinIntoOneShortLabel) {
    const struct {
        std::vector<std::string> keys;
        std::string_view label;
    } cases[] = {{{}, ""},
                 {{"⇧", "⌘", "S"}, "⇧⌘S"},
                 {{"⌃", "⌥", "return"}, "⌃⌥⏎"},
                 {{"⌘", "space"}, "⌘ Space"},
                 {{"space"}, "Space"},
                 {{"⌘", "F5"}, "⌘ F5"},
                 {{"F5"}, "F5"},
                 {{"⌃", "key 105"}, "⌃ key 105"}};
    for (const auto& [keys, label] : cases) EXPECT_EQ(Chords::compact(keys), label);
}

TEST(Chords, TopGoesByCountThenByChord) {
    const Tally::ChordCounts counts = {{{Modifiers(8), 5}, 3},
                                       {{Modifiers(1), 7}, 3},
                                       {{Modifiers(8), 1}, 3},
                                       {{Modifiers(2), 0}, 9},
                                       {{Modifiers(1), 1}, 0}};
    std::vector<Tally::Chord> order;
    for (const ChordRow& row : Chords::top(counts, legends, 10)) order.push_back(row.chord);
    EXPECT_THAT(order, ElementsAre(Tally::Chord{Modifiers(2), 0}, Tally::Chord{Modifiers(1), 7},
                                   Tally::Chord{Modifiers(8), 1}, Tally::Chord{Modifiers(8), 5}));
    EXPECT_THAT(Chords::top(counts, legends, 1), ElementsAre(ChordRow{{Modifiers(2), 0}, 9, {"⌥", "A"}}));
    EXPECT_THAT(Chords::top(counts, legends, 0), IsEmpty());
    EXPECT_THAT(Chords::top(counts, legends, -1), IsEmpty());
}

TEST(KeyFace, PrintsTheShiftedLegendOnTop) {
    EXPECT_THAT(KeyFace::lines({"a", "A"}), ElementsAre("A"));
    EXPECT_THAT(KeyFace::lines({"1", "!"}), ElementsAre("!", "1"));
    EXPECT_THAT(KeyFace::lines({"return"}), ElementsAre("⏎"));
    EXPECT_THAT(KeyFace::lines({"space"}), ElementsAre(""));
    EXPECT_THAT(KeyFace::lines({"F5"}), ElementsAre("F5"));
    EXPECT_THAT(KeyFace::lines({"a", "b", "c"}), ElementsAre("a", "b", "c"));
}

TEST(KeyFace, ShowsLettersAlwaysAndTheRestWhenNamed) {
    const std::optional<std::string> none;
    EXPECT_THAT(KeyFace::shown({"a", "A"}, "Hyper", false), ElementsAre("Hyper"));
    EXPECT_THAT(KeyFace::shown({"a", "A"}, "", false), ElementsAre("A"));
    EXPECT_THAT(KeyFace::shown({"½"}, none, false), ElementsAre("½"));
    EXPECT_THAT(KeyFace::shown({"-", "_"}, none, false), IsEmpty());
    EXPECT_THAT(KeyFace::shown({"-", "_"}, none, true), ElementsAre("-"));
    EXPECT_THAT(KeyFace::shown({"tab"}, none, false), IsEmpty());
    EXPECT_THAT(KeyFace::shown({"tab"}, none, true), ElementsAre("⇥"));
    EXPECT_THAT(KeyFace::shown({}, none, true), IsEmpty());
}

}  // namespace
}  // namespace tapcore

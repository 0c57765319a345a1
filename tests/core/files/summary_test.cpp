#include "core/files/summary.h"

#include <gtest/gtest.h>

namespace tapcore {
namespace {

DayFile typed(std::int64_t keystrokes, std::int64_t clicks, std::int64_t hour = 9) {
    DayFile file;
    file.tally.add(KeyCode{0}, hour, keystrokes);
    file.tally.add(Tally::Chord{{Modifiers::command}, 0}, hour, keystrokes);
    file.tally.add(Tally::MouseHour{.clicks = clicks, .moved = 500}, hour);
    file.peakPerMinute = keystrokes;
    return file;
}

TEST(Summary, AddsDaysUp) {
    Summary summary;
    summary.add({2026, 9, 20}, typed(30, 4));
    summary.add({2026, 9, 21}, typed(11, 0, 23));
    summary.add({2026, 9, 21}, {});
    Summary expected;
    expected.keystrokes = 41;
    expected.activeHours = 2;
    expected.peakPerMinute = 30;
    expected.byHour[9] = 30;
    expected.byHour[23] = 11;
    expected.byDay = {{{2026, 9, 20}, 30}, {{2026, 9, 21}, 11}, {{2026, 9, 21}, 0}};
    expected.byKey = {{0, 41}};
    expected.byChord = {{{{Modifiers::command}, 0}, 41}};
    expected.mouse[9] = {.clicks = 4, .moved = 500};
    expected.mouse[23] = {.moved = 500};
    EXPECT_EQ(summary, expected);
    EXPECT_EQ(summary.averagePerActiveHour(), 20);
    EXPECT_EQ(summary.clicks(), 4);
    EXPECT_EQ(summary.movedMetres(), 1000 * 0.000264);
}

TEST(Summary, SharesAreWholePerCentRoundedHalfAwayFromZero) {
    const struct {
        std::int64_t keystrokes, clicks;
        std::optional<std::int64_t> share;
    } cases[] = {{0, 0, {}}, {0, 10, 0}, {1, 1, 50}, {29, 171, 15}, {1, 199, 1}, {1, 200, 0}, {5, 0, 100}};
    for (const auto& [keystrokes, clicks, share] : cases) {
        Summary summary;
        summary.add({2026, 9, 20}, typed(keystrokes, clicks));
        EXPECT_EQ(summary.keyboardShare(), share) << keystrokes << " of " << keystrokes + clicks;
    }
    EXPECT_EQ(Summary{}.averagePerActiveHour(), 0);
    EXPECT_EQ(Summary{}.movedMetres(), 0);
}

TEST(Summary, RemappingAddsCountsThatMeet) {
    Summary summary;
    DayFile file;
    for (const KeyCode code : {KeyCode{1}, KeyCode{2}, KeyCode{3}}) file.tally.add(code, 0, code * 10);
    file.tally.add(Tally::Chord{{Modifiers::command}, 1}, 0, 4);
    summary.add({2026, 9, 20}, file);
    EXPECT_EQ(summary.remapped(std::nullopt), summary);
    Summary expected = summary;
    expected.byKey = {{2, 20}, {3, 40}};
    expected.byChord = {{{{Modifiers::command}, 3}, 4}};
    EXPECT_EQ(summary.remapped(KeyRemap{{1, 3}}), expected);
    expected.byKey = {{1, 20}, {2, 10}, {3, 30}};
    expected.byChord = {{{{Modifiers::command}, 2}, 4}};
    EXPECT_EQ(summary.remapped(KeyRemap{{1, 2}, {2, 1}}), expected) << "a swap moves each once";
}

}  // namespace
}  // namespace tapcore

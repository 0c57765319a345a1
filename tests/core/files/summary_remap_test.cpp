#include <gtest/gtest.h>

#include "core/files/summary.h"

namespace tapcore {
namespace {

// 12 and 13 trade places, 54 joins 55.
const KeyRemap remap{{12, 13}, {13, 12}, {54, 55}};

TEST(SummaryRemap, ReportsKeysAndChordsUnderTheirNewCodesAndAddsUpWhatMeets) {
    Summary summary;
    summary.keystrokes = 100;
    summary.byKey = {{12, 1}, {13, 2}, {54, 10}, {55, 20}, {60, 7}};
    summary.byChord = {{{Modifiers::command, 12}, 3},
                       {{Modifiers::command, 54}, 4},
                       {{Modifiers::command, 55}, 5},
                       {{Modifiers::control, 55}, 6}};
    Summary expected = summary;
    expected.byKey = {{12, 2}, {13, 1}, {55, 30}, {60, 7}};
    expected.byChord = {
        {{Modifiers::control, 55}, 6}, {{Modifiers::command, 13}, 3}, {{Modifiers::command, 55}, 9}};
    EXPECT_EQ(summary.remapped(remap), expected);
    EXPECT_EQ(summary.remapped(std::nullopt), summary);
}

}  // namespace
}  // namespace tapcore

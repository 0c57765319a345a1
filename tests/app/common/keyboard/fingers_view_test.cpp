#include "app/common/keyboard/fingers_view.h"

#include <gtest/gtest.h>

#include <limits>

namespace tappora {
namespace {

TEST(FingersView, WritesTravelAsLongAsItIs) {
    const std::pair<double, const char*> cases[] = {{0, "0 m"},       {0.049, "<0.1 m"}, {0.05, "0.1 m"},
                                                    {0.44, "0.4 m"},  {9.94, "9.9 m"},   {9.95, "10 m"},
                                                    {123.4, "123 m"}, {999.4, "999 m"},  {999.5, "1.0 km"},
                                                    {1240, "1.2 km"}, {1e6, "1000.0 km"}};
    for (const auto& [metres, text] : cases) EXPECT_EQ(travelText(metres), text);
    EXPECT_EQ(travelText(std::numeric_limits<double>::infinity()), "?");
}

TEST(FingersView, NamesEachFingerOfBothHands) {
    using Hand = tapcore::Board::Hand;
    using Finger = tapcore::Board::Finger;
    const struct {
        Hand hand;
        Finger finger;
        const char* name;
    } cases[] = {
        {Hand::left, Finger::pinky, "left little finger"},
        {Hand::left, Finger::ring, "left ring finger"},
        {Hand::right, Finger::middle, "right middle finger"},
        {Hand::right, Finger::index, "right index finger"},
        {Hand::right, Finger::thumb, "right thumb"},
    };
    for (const auto& c : cases) EXPECT_EQ(fingerName(c.hand, c.finger), c.name);
}

TEST(FingersView, ComparesWithTheLargestRowOnEitherLayout) {
    LoadSection section{.heading = "", .rows = {}};
    EXPECT_EQ(mostPresses(section), 1);
    section.rows = {{.name = "a", .part = {.presses = 5}, .other = {}},
                    {.name = "b", .part = {.presses = 7}, .other = {}}};
    EXPECT_EQ(mostPresses(section), 7);
    section.rows[0].other = tapcore::Load::Part{.presses = 9};
    EXPECT_EQ(mostPresses(section), 9);
}

}  // namespace
}  // namespace tappora

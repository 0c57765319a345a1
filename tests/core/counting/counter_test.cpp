#include "core/counting/counter.h"

#include <gtest/gtest.h>

#include "core/counting/event_watch.h"

namespace tapcore {
namespace {

TEST(Counter, DrainsWhatWasPressedIntoOneHour) {
    Counter counter;
    counter.press(0, {});
    counter.press(0, {Modifiers::shift});
    counter.press(8, {Modifiers::control, Modifiers::shift});
    counter.press(127, {Modifiers::function});
    counter.press(128, {Modifiers::command});
    counter.press(65535, {});
    counter.press(9, Modifiers(0xE8));  // cmd, and bits that mean nothing
    counter.click(Counter::Button::left);
    counter.click(Counter::Button::middle);
    counter.click(Counter::Button::middle);
    counter.click(Counter::Button::right);
    for (int i = 0; i < 5; ++i) counter.scroll();
    for (const double distance : {1.5, 4000.0, 5000.0, -3.0, 0.0, 3999.0}) counter.moved(distance);
    EXPECT_EQ(counter.pending(), 5);
    EXPECT_EQ(counter.pendingClicks(), 4);

    Tally expected;
    for (const auto& [code, count] : {std::pair{0, 2}, {8, 1}, {9, 1}, {127, 1}})
        expected.add(static_cast<KeyCode>(code), 14, count);
    expected.add(Tally::Chord{{Modifiers::control, Modifiers::shift}, 8}, 14, 1);
    expected.add(Tally::Chord{{Modifiers::command}, 9}, 14, 1);
    expected.add(Tally::MouseHour{1, 1, 2, 5, 4001}, 14);
    EXPECT_EQ(counter.drain(14).tally, expected);
    EXPECT_TRUE(counter.drain(14).tally.isEmpty());
    EXPECT_EQ(counter.pending() + counter.pendingClicks(), 0);
}

TEST(Counter, KeepsTheBusiestClosedMinute) {
    Counter counter;
    const auto type = [&](int presses) {
        while (presses-- > 0) counter.press(1, {});
    };
    type(3);
    counter.closeMinute();
    type(5);
    counter.closeMinute();
    type(2);
    EXPECT_EQ(counter.drain(0).peakPerMinute, 5);
    EXPECT_EQ(counter.peak(), 0);
    type(1);
    counter.closeMinute();
    EXPECT_EQ(counter.peak(), 3) << "the minute under way goes on through a drain";
    counter.press(200, {});
    EXPECT_EQ(counter.thisMinute(), 0);
}

TEST(Counter, DiscardingKeepsOnlyThePeak) {
    Counter counter;
    counter.press(1, {Modifiers::command});
    counter.closeMinute();
    counter.press(1, {});
    counter.click(Counter::Button::left);
    counter.scroll();
    counter.moved(10);
    counter.discard();
    EXPECT_EQ(counter.thisMinute(), 0);
    const auto drained = counter.drain(0);
    EXPECT_TRUE(drained.tally.isEmpty());
    EXPECT_EQ(drained.peakPerMinute, 1);
}

TEST(EventWatch, SaysWhatWasCountedAndWhyNot) {
    using namespace EventWatch;
    EXPECT_EQ(line(Kind::key, Counted{}), "key — counted");
    EXPECT_EQ(line(Kind::modifier, Repeated{}), "modifier — held, a repeat — not counted");
    EXPECT_EQ(line(Kind::key, SecureInput{}), "key — password field — not counted");
    EXPECT_EQ(line(Kind::rightClick, MouseOff{}), "right click — mouse counting is off — not counted");
    EXPECT_EQ(line(Kind::otherClick, PostedBy{"ydotool"}), "middle click — posted by ydotool — not counted");
    EXPECT_EQ(line(Kind::click, Counted{}), "click — counted");
    EXPECT_TRUE(isWatchLine("middle click — x"));
    EXPECT_FALSE(isWatchLine("click - counted"));
    EXPECT_FALSE(isWatchLine("keys — counted"));
    EXPECT_TRUE(EventOrigin::isInjected(-1) && !EventOrigin::isInjected(0));
}

}  // namespace
}  // namespace tapcore

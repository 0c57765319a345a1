#include "app/common/folder/practice_lock.h"
#include "core/foundation/file_io.h"
#include "core/widget/widget_snapshot.h"
#include "tests/app/recorder_live/live.h"
#include "tests/support/environment.h"

namespace tappora {
namespace {

using tapcore::WidgetSnapshot;

TEST_F(Live, CountsAKeyboardAndAMouseUntilItIsTerminated) {
    bed.plug(keyboard);
    bed.plug(mouse);
    Program recorder(watching());
    ASSERT_TRUE(recorder.prints("listening to A keyboard (/dev/input/event5)")) << recorder.printed;
    ASSERT_TRUE(recorder.prints("listening to A mouse (/dev/input/event6)")) << recorder.printed;
    bed.send(keyboard, {{EV_KEY, KEY_LEFTCTRL, 1}});
    ASSERT_TRUE(recorder.prints("modifier — counted\n"));
    bed.tap(keyboard, KEY_S);
    ASSERT_TRUE(recorder.prints("key — counted\n"));
    bed.send(mouse, {{EV_REL, REL_WHEEL, -1}, {EV_REL, REL_WHEEL_HI_RES, -120}});
    bed.send(mouse, {{EV_REL, REL_X, 30}});
    bed.tap(mouse, BTN_RIGHT);
    ASSERT_TRUE(recorder.prints("right click — counted\n"));
    EXPECT_EQ(recorder.stop(), 0);
    const auto shown = WidgetSnapshot::decode(tapcore::readFile(share / "Tappora/widget.json").text);
    EXPECT_EQ(shown ? shown->today : -1, 2);
    const Tally tally = counted();
    EXPECT_EQ(tally.byKey(), (Tally::KeyCounts{{1, 1}, {59, 1}}));
    EXPECT_EQ(tally.byChord(), (Tally::ChordCounts{{{tapcore::Modifiers::control, 1}, 1}}));
    const Tally::MouseHour total = tally.mouseTotal();
    EXPECT_EQ(total.right, 1);
    EXPECT_EQ(total.scrolls, 1);
    EXPECT_GT(total.moved, 0) << "how far depends on libinput's acceleration";
}

TEST_F(Live, TakesDevicesAsTheyComeAndGo) {
    const MockDevice second{.number = 8, .name = "Second keyboard"};
    const MockDevice third{.number = 9, .name = "Third keyboard"};
    bed.plug(keyboard);
    Program recorder(watching());
    ASSERT_TRUE(recorder.prints("listening to A keyboard (/dev/input/event5)")) << recorder.printed;
    bed.plug(second);
    ASSERT_TRUE(recorder.prints("listening to Second keyboard (/dev/input/event8)")) << recorder.printed;
    bed.send(second, {{EV_KEY, KEY_LEFTCTRL, 1}});
    ASSERT_TRUE(recorder.prints("modifier — counted\n"));
    bed.unplug(keyboard);
    bed.unplug(second);
    ASSERT_TRUE(recorder.prints("no keyboard is left; waiting for one")) << recorder.printed;
    bed.plug(third);
    ASSERT_TRUE(recorder.prints("listening to Third keyboard (/dev/input/event9)")) << recorder.printed;
    bed.tap(third, KEY_B);
    ASSERT_TRUE(recorder.prints("key — counted\n"));
    EXPECT_EQ(recorder.stop(SIGINT), 0);
    EXPECT_EQ(counted().byKey(), (Tally::KeyCounts{{11, 1}, {59, 1}}));
    EXPECT_TRUE(counted().byChord().empty()) << "what the keyboard held that is gone is released";
}

TEST_F(Live, TellsProgramsFromPeople) {
    const MockDevice tool{.number = 8, .name = "ydotoold virtual device", .isVirtual = true};
    const MockDevice remapper{.number = 9, .name = "keyd virtual keyboard", .isVirtual = true};
    bed.plug(keyboard);
    bed.plug(tool);
    bed.plug(remapper);
    Program recorder(watching());
    for (const MockDevice& device : {keyboard, tool, remapper})
        ASSERT_TRUE(recorder.prints("listening to " + device.name)) << recorder.printed;
    bed.tap(tool, KEY_A);
    ASSERT_TRUE(recorder.prints("key — posted by ydotoold virtual device — not counted\n"))
        << recorder.printed;
    bed.tap(remapper, KEY_A);
    ASSERT_TRUE(recorder.prints("key — counted\n")) << recorder.printed;
    tapcore::writeFile(share / "Tappora", "a file where the folder should be").requireSafe();
    recorder.signal(SIGHUP);
    EXPECT_TRUE(recorder.prints("tappora: the widgets stay as they are: " + share.string()))
        << recorder.printed;
    EXPECT_EQ(recorder.end(), 0);
    EXPECT_EQ(counted().total(), 1);
}

TEST_F(Live, KnowsWhatWasHeldBeforeItBeganAndSeesItReleased) {
    MockDevice holding = keyboard;
    holding.held = {KEY_LEFTCTRL, KEY_A};
    bed.plug(holding);
    Program recorder(watching());
    ASSERT_TRUE(recorder.prints("listening to A keyboard")) << recorder.printed;
    bed.tap(keyboard, KEY_S);
    ASSERT_TRUE(recorder.prints("key — counted\n")) << recorder.printed;
    bed.change(keyboard);
    bed.tap(keyboard, KEY_S);
    ASSERT_TRUE(recorder.prints("key — counted\n")) << recorder.printed;
    EXPECT_EQ(recorder.stop(), 0);
    EXPECT_EQ(counted().byKey(), (Tally::KeyCounts{{1, 2}}));
    EXPECT_EQ(counted().byChord(), (Tally::ChordCounts{{{tapcore::Modifiers::control, 1}, 1}}));
}

TEST_F(Live, SaysThatTheKernelDroppedEvents) {
    bed.plug(keyboard);
    Program recorder(watching());
    ASSERT_TRUE(recorder.prints("listening to A keyboard")) << recorder.printed;
    bed.send(keyboard, {{EV_KEY, KEY_A, 1}, {EV_SYN, SYN_DROPPED, 0}});
    bed.tap(keyboard, KEY_S);
    ASSERT_TRUE(recorder.prints("key — counted\n")) << recorder.printed;
    recorder.signal(SIGTERM);
    EXPECT_TRUE(recorder.prints("tappora: some presses were not seen: the machine was too busy\n"))
        << recorder.printed;
    EXPECT_EQ(recorder.end(), 0);
}

TEST_F(Live, CountsNoPracticeAndKnowsWhatIsHeldAfterIt) {
    bed.plug(keyboard);
    Program recorder(watching());
    ASSERT_TRUE(recorder.prints("listening to A keyboard")) << recorder.printed;
    PracticeLock trainer(environmentWith({}), folder);  // the recorder may be a service with other variables
    trainer.hold();
    bed.send(keyboard, {{EV_KEY, KEY_LEFTCTRL, 1}});
    ASSERT_TRUE(recorder.prints("modifier — practice — not counted\n")) << recorder.printed;
    bed.tap(keyboard, KEY_A);
    ASSERT_TRUE(recorder.prints("key — practice — not counted\n")) << recorder.printed;
    trainer.release();
    bed.tap(keyboard, KEY_S);
    ASSERT_TRUE(recorder.prints("key — counted\n")) << recorder.printed;
    EXPECT_EQ(recorder.stop(), 0);
    EXPECT_EQ(counted().byKey(), (Tally::KeyCounts{{1, 1}}));
    EXPECT_EQ(counted().byChord(), (Tally::ChordCounts{{{tapcore::Modifiers::control, 1}, 1}}));
}

}  // namespace
}  // namespace tappora

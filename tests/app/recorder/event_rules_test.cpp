#include "app/recorder/event_rules.h"

#include <gmock/gmock.h>
#include <linux/input-event-codes.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tappora {
namespace {

using tapcore::Modifiers;
using tapcore::Tally;
using testing::ElementsAre;
using Axis = WheelEvent::Axis;

const InputDevice keyboard{.name = "AT keyboard", .bus = 17, .vendor = 1, .product = 1};
const InputDevice mouse{.name = "A mouse", .bus = 3};

/// A desk with a keyboard (0) and a mouse (1), to which more can be plugged.
struct Desk {
    explicit Desk(EventRules::Options options = {})
        : rules(std::move(options), counter, [&](const std::string& line) { lines.push_back(line); }) {
        rules.plug(0, keyboard);
        rules.plug(1, mouse);
    }

    void key(int code, KeyEvent::Action action, DeviceId id = 0) {
        rules.take(id, KeyEvent{static_cast<std::uint16_t>(code), action});
    }
    void press(int code, DeviceId id = 0) { key(code, KeyEvent::Action::press, id); }
    void release(int code, DeviceId id = 0) { key(code, KeyEvent::Action::release, id); }
    void turn(double parts, Axis axis = Axis::vertical) { rules.take(1, WheelEvent{axis, parts}); }
    Tally counted() { return counter.drain(0).tally; }
    /// The modifiers of the chords with this key, each with its count: "ctrl 1".
    std::vector<std::string> chords() {
        std::vector<std::string> found;
        for (const auto& [chord, count] : counted().byChord())
            found.push_back(chord.modifiers.name() + " " + std::to_string(count));
        return found;
    }

    tapcore::Counter counter;
    std::vector<std::string> lines;
    EventRules rules;
};

TEST(EventRules, CountAPressOnceHoweverLongItIsHeld) {
    Desk desk;
    desk.release(KEY_ENTER);
    desk.press(KEY_A);
    desk.key(KEY_A, KeyEvent::Action::repeat);
    desk.release(KEY_A);
    desk.press(KEY_CAPSLOCK);
    desk.press(KEY_MICMUTE);
    desk.press(BTN_TOOL_FINGER);
    EXPECT_THAT(desk.lines,
                ElementsAre("key — counted", "key — held, a repeat — not counted", "modifier — counted",
                            "key — no key code for KEY_MICMUTE — not counted"));
    EXPECT_EQ(desk.counted().byKey(), (Tally::KeyCounts{{0, 1}, {57, 1}}));
}

TEST(EventRules, TakeTheModifiersOfBothSidesAndAllKeyboards) {
    Desk desk;
    desk.rules.plug(2, {.name = "Second keyboard"});
    desk.press(KEY_LEFTCTRL);
    desk.press(KEY_RIGHTCTRL);
    desk.press(KEY_LEFTSHIFT, 2);
    desk.release(KEY_LEFTCTRL);
    desk.press(KEY_S);
    EXPECT_THAT(desk.chords(), ElementsAre("ctrl+shift 1"))
        << "a modifier pressed with others is no shortcut";
    desk.rules.unplug(2);
    desk.press(KEY_S);
    EXPECT_THAT(desk.chords(), ElementsAre("ctrl 1"));
    desk.rules.take(0, LostEvents{});
    desk.press(KEY_S);
    EXPECT_THAT(desk.chords(), ElementsAre());
    for (const int key : {KEY_RIGHTALT, KEY_RIGHTMETA, KEY_FN}) desk.press(key);
    desk.press(KEY_S);
    EXPECT_THAT(desk.chords(), ElementsAre("opt+cmd+fn 1"));
}

TEST(EventRules, AskWhatIsHeldWhereAReleaseMayNotBeSeen) {
    std::map<DeviceId, std::vector<LinuxKey>> down = {{0, {KEY_LEFTCTRL}}};
    Desk desk({.heldOn = [&](DeviceId id) { return std::optional(down[id]); }});
    const auto chordsOn = [&](DeviceId id) {
        desk.press(KEY_S, id);
        return desk.chords();
    };
    EXPECT_THAT(chordsOn(0), ElementsAre("ctrl 1")) << "held since before the recorder began";
    down[0] = {};
    EXPECT_THAT(chordsOn(0), ElementsAre()) << "its release is never seen";
    desk.press(KEY_LEFTALT);
    EXPECT_THAT(chordsOn(0), ElementsAre("opt 1")) << "a keyboard that types tells its own releases";
    down[0] = {KEY_LEFTALT};
    desk.rules.plug(2, {.name = "keyd virtual keyboard", .isVirtual = true});
    EXPECT_THAT(chordsOn(2), ElementsAre("opt 1"));
    down[0] = {};
    EXPECT_THAT(chordsOn(2), ElementsAre()) << "released while the remapper kept it to itself";
    down[3] = {KEY_LEFTSHIFT, KEY_LEFTMETA};
    desk.rules.plug(3, {.name = "ydotoold", .isVirtual = true});
    EXPECT_THAT(chordsOn(0), ElementsAre()) << "a program holds nothing";
}

TEST(EventRules, LeaveOutWhatProgramsPostButNotWhatRemappersPassOn) {
    struct Case {
        InputDevice device;
        const char* line;
    };
    const Case cases[] = {
        {{.name = "ydotoold", .isVirtual = true}, "key — posted by ydotoold — not counted"},
        {{.name = "ydotoold", .isVirtual = false}, "key — counted"},
        {{.name = "keyd virtual keyboard", .isVirtual = true}, "key — counted"},
        {{.name = "My KMonad output", .isVirtual = true}, "key — counted"},
        {{.name = "Own Mapper 2", .isVirtual = true}, "key — counted"},
        {{.name = "AT keyboard", .bus = 17, .vendor = 1, .product = 1, .isVirtual = true}, "key — counted"},
        {{.name = "AT keyboard", .bus = 3, .vendor = 1, .product = 1, .isVirtual = true},
         "key — posted by AT keyboard — not counted"},
    };
    for (const auto& [device, line] : cases) {
        Desk desk({.remappers = {"own mapper"}});
        desk.rules.plug(2, device);
        desk.press(KEY_LEFTCTRL, 2);
        desk.press(KEY_V, 2);
        EXPECT_EQ(desk.lines.back(), line) << device.name;
        desk.counted();
        desk.press(KEY_B);
        const bool isPosted = std::string(line) != "key — counted";
        EXPECT_EQ(desk.chords().empty(), isPosted) << "a posted modifier is not held by the user";
    }
}

TEST(EventRules, CountButtonsWholeWheelStepsAndPointerMotion) {
    Desk desk;
    for (const int button : {BTN_LEFT, BTN_RIGHT, BTN_MIDDLE, BTN_SIDE}) desk.press(button, 1);
    EXPECT_THAT(desk.lines, ElementsAre("click — counted", "right click — counted", "middle click — counted",
                                        "middle click — counted"));
    for (const double parts : {-120.0, 40.0, 40.0, 40.0, 90.0, -60.0, -60.0, 360.0, 1e12}) desk.turn(parts);
    desk.turn(119, Axis::horizontal);
    desk.rules.take(1, MotionEvent{3, -4});
    desk.rules.take(1, MotionEvent{5000, 0});
    EXPECT_EQ(desk.counted().mouseTotal(), (Tally::MouseHour{1, 1, 2, 6, 5}));
}

TEST(EventRules, LeaveTheMouseOutWhenAskedTo) {
    Desk desk({.countsMouse = false});
    desk.press(BTN_LEFT, 1);
    desk.turn(120);
    desk.rules.take(1, MotionEvent{3, 4});
    EXPECT_THAT(desk.lines, ElementsAre("click — mouse counting is off — not counted"));
    EXPECT_TRUE(desk.counted().isEmpty());
}

TEST(EventRules, CountNothingWhilePausedAndKnowWhatIsHeldAfterwards) {
    Desk desk;
    desk.rules.setPaused(true);
    desk.press(KEY_LEFTCTRL);
    desk.press(KEY_S);
    desk.press(BTN_LEFT, 1);
    desk.turn(240);
    EXPECT_TRUE(desk.counted().isEmpty());
    EXPECT_TRUE(desk.lines.empty());
    desk.rules.setPaused(false);
    desk.press(KEY_S);
    EXPECT_THAT(desk.chords(), ElementsAre("ctrl 1"));
}

TEST(EventRules, LeaveOutPracticeAndKnowWhatIsHeldAfterwards) {
    bool isPractising = true;
    Desk desk({.isPractising = [&] { return isPractising; }});
    desk.press(KEY_LEFTCTRL);
    desk.press(KEY_S);
    desk.press(BTN_LEFT, 1);
    EXPECT_THAT(desk.lines, ElementsAre("modifier — practice — not counted", "key — practice — not counted",
                                        "click — counted"));
    EXPECT_EQ(desk.counted().total(), 0);
    isPractising = false;
    desk.press(KEY_S);
    EXPECT_THAT(desk.chords(), ElementsAre("ctrl 1"));
}

}  // namespace
}  // namespace tappora

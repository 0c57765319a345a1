#include "app/recorder/live_recorder.h"

#include <gmock/gmock.h>
#include <linux/input-event-codes.h>
#include <sys/eventfd.h>

#include <chrono>
#include <csignal>
#include <deque>
#include <string>
#include <vector>

#include "app/common/program.h"
#include "app/recorder/local_time.h"

namespace tappora {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/// Devices that do one thing after another, one at each dispatch; the last is that a signal ends the
/// recorder.
class Script : public EventSource {
  public:
    using Step = std::function<void(EventListener& listener)>;

    explicit Script(std::deque<Step> steps) : steps_(std::move(steps)) {
        steps_.push_back([](EventListener&) { std::raise(SIGTERM); });
    }
    int descriptor() const override { return alwaysReadable_.get(); }
    void dispatch(EventListener& listener) override {
        if (steps_.empty()) return;
        const Step step = steps_.front();
        steps_.pop_front();
        step(listener);
    }

  private:
    std::deque<Step> steps_;
    tapcore::Descriptor alwaysReadable_{::eventfd(1, EFD_CLOEXEC)};
};

void plugKeyboard(EventListener& listener) {
    listener.plugged(1, {.name = "A keyboard", .node = "/dev/input/event5", .isKeyboard = true});
}
void press(EventListener& listener) { listener.happened(1, KeyEvent{KEY_A, KeyEvent::Action::press}); }

/// A recorder in a world of its own.
struct World {
    const tapcore::Calendar calendar{"UTC"};
    tapcore::Instant now = momentOf("2026-09-20T23:57:30", calendar).value();
    std::string zone = "UTC";
    bool isFull = false;
    std::vector<std::string> told;
    std::vector<std::string> stored;  ///< "DAY PRESSES PAUSED"
    int updates = 0;                  ///< of what follows the files

    void run(std::deque<Script::Step> steps) {
        const auto write = [this](const tapcore::Day& day, const DayCounts& counts) {
            if (isFull) throw Failure("days/" + day.description() + ".org", "No space left on device");
            stored.push_back(day.description() + " " + std::to_string(counts.tally.total()) + " " +
                             std::to_string(counts.pausedMinutes));
        };
        LiveRecorder recorder({}, {},
                              {.now = [this] { return now; },
                               .zone = [this] { return zone; },
                               .tryWrite = write,
                               .write = write,
                               .stored = [this] { ++updates; },
                               .tell = [this](const std::string& text) { told.push_back(text); }});
        Script script(std::move(steps));
        recorder.run(script);
    }

    Script::Step nextMinute() {
        return [this](EventListener&) { now += std::chrono::minutes(1); };
    }
    Script::Step disk(bool full) {
        return [this, full](EventListener&) { isFull = full; };
    }
};

TEST(LiveRecorder, StoresEachMinuteAndWhatIsLeftAtTheEnd) {
    World world;
    world.run({plugKeyboard, press, press, world.nextMinute(), press, world.nextMinute(), world.nextMinute(),
               press});
    EXPECT_THAT(world.stored, ElementsAre("2026-09-20 2 0", "2026-09-20 1 0", "2026-09-21 1 0"));
    EXPECT_EQ(world.updates, 3);
    EXPECT_THAT(world.told, ElementsAre("listening to A keyboard (/dev/input/event5)"));
}

TEST(LiveRecorder, CountsInTheZoneThatTheMachineIsSetTo) {
    World world;
    const auto travel = [&](EventListener&) { world.zone = "Asia/Tokyo"; };
    world.run({plugKeyboard, press, travel, press, world.nextMinute(), press});
    EXPECT_THAT(world.stored, ElementsAre("2026-09-20 2 0", "2026-09-21 1 0"));
}

TEST(LiveRecorder, KeepsWhatFailsToBeStoredAndSaysSoOnce) {
    World world;
    world.run({plugKeyboard, press, world.disk(true), world.nextMinute(), press, world.nextMinute(), press,
               world.nextMinute(), world.disk(false), world.nextMinute()});
    EXPECT_THAT(world.stored, ElementsAre("2026-09-20 3 0"));
    EXPECT_EQ(world.updates, 1);
    EXPECT_THAT(
        world.told,
        ElementsAre(
            "listening to A keyboard (/dev/input/event5)",
            "cannot store: days/2026-09-20.org: No space left on device; the counts are kept and tried again",
            "stored again, with what was kept"));
}

TEST(LiveRecorder, FailsInTheEndNamingWhatIsLost) {
    World world;
    try {
        world.run({plugKeyboard, press, world.disk(true)});
        FAIL() << "no failure";
    } catch (const Failure& failure) {
        EXPECT_STREQ(
            failure.what(),
            "days/2026-09-20.org: No space left on device: lost are presses 1, clicks 0 of 2026-09-20");
    }
}

TEST(LiveRecorder, CountsPausedMinutesAndNothingElseBetweenTwoSignals) {
    World world;
    const auto toggle = [](EventListener&) { std::raise(SIGUSR1); };
    world.run(
        {plugKeyboard, press, toggle, press, world.nextMinute(), press, world.nextMinute(), toggle, press});
    EXPECT_THAT(world.stored, ElementsAre("2026-09-20 1 1", "2026-09-20 0 1", "2026-09-20 1 0"));
    EXPECT_THAT(world.told, ElementsAre("listening to A keyboard (/dev/input/event5)",
                                        "paused: nothing is counted", "counting again"));
}

TEST(LiveRecorder, RefusesToWaitWithoutAKeyboardAndNamesTheRemedyOnce) {
    World world;
    const auto unreadable = [](EventListener& listener) {
        const auto denied = std::make_error_code(std::errc::permission_denied);
        listener.plugged(1, {.name = "A mouse", .node = "/dev/input/event6"});
        listener.unreadable({.name = "A keyboard", .node = "/dev/input/event5"}, denied);
        listener.unreadable({.name = "Another", .node = "/dev/input/event7"}, denied);
    };
    EXPECT_THROW(world.run({unreadable}), Failure);
    EXPECT_THAT(world.told,
                ElementsAre("listening to A mouse (/dev/input/event6)",
                            "A keyboard (/dev/input/event5): cannot be read: Permission denied",
                            HasSubstr("every program you start can read every key, passwords too"),
                            "Another (/dev/input/event7): cannot be read: Permission denied"));
}

}  // namespace
}  // namespace tappora

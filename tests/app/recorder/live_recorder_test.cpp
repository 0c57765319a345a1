#include "app/recorder/live_recorder.h"

#include <gmock/gmock.h>
#include <linux/input-event-codes.h>
#include <sys/eventfd.h>

#include <chrono>
#include <condition_variable>
#include <csignal>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

#include "app/common/program.h"
#include "app/common/system/moment.h"
#include "app/recorder/pause_keeper.h"
#include "core/foundation/descriptor.h"

namespace tappora {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;

/// Devices that do one thing after another, one at every other dispatch, so that the recorder has gone to the
/// time that a step sets before the next; the last is that a signal ends the recorder.
class Script : public EventSource {
  public:
    using Step = std::function<void(EventListener& listener)>;

    explicit Script(std::deque<Step> steps) : steps_(std::move(steps)) {
        steps_.push_back([](EventListener&) { std::raise(SIGTERM); });
    }
    int descriptor() const override { return alwaysReadable_.get(); }
    void dispatch(EventListener& listener) override {
        isIdle_ = !isIdle_;
        if (isIdle_ || steps_.empty()) return;
        const Step step = steps_.front();
        steps_.pop_front();
        step(listener);
    }
    std::optional<std::vector<LinuxKey>> heldModifiers(DeviceId) const override { return std::nullopt; }

  private:
    std::deque<Step> steps_;
    bool isIdle_ = true;
    tapcore::Descriptor alwaysReadable_{::eventfd(1, EFD_CLOEXEC)};
};

void plugKeyboard(EventListener& listener) {
    listener.plugged(1, {.name = "A keyboard", .node = "/dev/input/event5", .isKeyboard = true});
}
void pressAgo(EventListener& listener, std::chrono::milliseconds ago) {
    listener.happened(1, KeyEvent{KEY_A, KeyEvent::Action::press}, ago);
}
void press(EventListener& listener) { pressAgo(listener, 0ms); }

/// A recorder in a world of its own. Steps are done by the thread that reads, the rest by the one that
/// stores.
struct World {
    const tapcore::Calendar calendar{"UTC"};
    tapcore::Instant now = momentOf("2026-09-20T23:57:30", calendar).value();
    std::string zone = "UTC";
    bool isFull = false;
    std::vector<std::string> told;
    std::vector<std::string> stored;  ///< "DAY PRESSES PAUSED"
    int updates = 0;                  ///< of what follows the files
    PauseSwitch pauses;
    RecorderStatus status;  ///< at the end
    std::function<void()> beforeWriting = [] {};
    std::function<void()> eachMinute = [] {};
    std::function<void(const std::function<bool()>& endsSoon)> waitToStart = [](const auto&) {};
    std::mutex mutex;
    std::condition_variable changed;

    auto locked(auto change) {
        const std::lock_guard lock(mutex);
        changed.notify_all();
        return change();
    }

    void run(std::deque<Script::Step> steps) {
        const auto write = [this](const tapcore::Day& day, const DayCounts& counts) {
            beforeWriting();
            locked([&] {
                if (isFull) throw Failure("days/" + day.description() + ".org", "No space left on device");
                stored.push_back(day.description() + " " + std::to_string(counts.tally.total()) + " " +
                                 std::to_string(counts.pausedMinutes));
            });
        };
        const Tell tell = [this](const std::string& text) { locked([&] { told.push_back(text); }); };
        PauseKeeper keeper(
            pauses, {}, [](tapcore::Instant) { return "its end"; }, tell);
        LiveRecorder recorder({}, pauses,
                              {.now = [this] { return now; },
                               .eachMinute = eachMinute,
                               .calendar = [this] { return locked([&] { return tapcore::Calendar(zone); }); },
                               .ready =
                                   [this](const std::function<bool()>& endsSoon) {
                                       waitToStart(endsSoon);
                                       locked([&] { told.push_back("ready"); });
                                   },
                               .tryWrite = write,
                               .write = write,
                               .stored = [this] { locked([&] { ++updates; }); },
                               .tell = tell,
                               .followPause = [&] { keeper.follow({}); }});
        Script script(std::move(steps));
        recorder.run(script);
        status = recorder.status();
    }

    Script::Step nextMinute() {
        return [this](EventListener&) { now += std::chrono::minutes(1); };
    }
    Script::Step disk(bool full) {
        return [this, full](EventListener&) { locked([&] { isFull = full; }); };
    }
    /// Waits until that is so in the thread that stores; for half a minute at most.
    Script::Step until(std::function<bool()> isSo) {
        return [this, isSo](EventListener&) {
            std::unique_lock lock(mutex);
            EXPECT_TRUE(changed.wait_for(lock, 30s, isSo));
        };
    }
    Script::Step untilStored(std::size_t times) {
        return until([this, times] { return stored.size() >= times; });
    }
    Script::Step untilTold(const std::string& start) {
        return until([this, start] { return !told.empty() && told.back().starts_with(start); });
    }
};

TEST(LiveRecorder, StoresEachMinuteAndWhatIsLeftAtTheEnd) {
    World world;
    world.run({plugKeyboard, press, press, world.nextMinute(), world.untilStored(1), press,
               world.nextMinute(), world.untilStored(2), world.nextMinute(), press});
    EXPECT_THAT(world.stored, ElementsAre("2026-09-20 2 0", "2026-09-20 1 0", "2026-09-21 1 0"));
    EXPECT_EQ(world.updates, 3);
    EXPECT_THAT(world.told, ElementsAre("listening to A keyboard (/dev/input/event5)", "ready"));
}

TEST(LiveRecorder, ReadsOnWhileADiskTakesItsTime) {
    World world;
    bool isWriting = false, isDone = false;
    world.beforeWriting = [&] {
        std::unique_lock lock(world.mutex);
        isWriting = true;
        world.changed.notify_all();
        EXPECT_TRUE(world.changed.wait_for(lock, 30s, [&] { return isDone; }));
    };
    const auto finishWriting = [&](EventListener&) { world.locked([&] { isDone = true; }); };
    world.run({plugKeyboard, press, world.nextMinute(), world.until([&] { return isWriting; }), press, press,
               finishWriting});
    EXPECT_THAT(world.stored, ElementsAre("2026-09-20 1 0", "2026-09-20 2 0"));
}

TEST(LiveRecorder, BooksAPressWhenItWasMadeHoweverLateItIsRead) {
    World world;
    const auto read = [](EventListener& listener) {
        for (const auto ago : {40s, 31s, 29s, 0s}) pressAgo(listener, ago);
    };
    world.run({plugKeyboard, world.nextMinute(), world.nextMinute(), world.nextMinute(), read});
    EXPECT_THAT(world.stored, ElementsAre("2026-09-20 2 0", "2026-09-21 2 0"));
}

TEST(LiveRecorder, SaysHowOftenTheKernelDroppedEvents) {
    World world;
    const auto drop = [](EventListener& listener) { listener.dropped(); };
    world.run({plugKeyboard, drop, drop, world.nextMinute(), world.untilTold("some"), drop});
    EXPECT_THAT(world.told, ElementsAre("listening to A keyboard (/dev/input/event5)", "ready",
                                        "some presses were not seen: the machine was too busy (2 times)",
                                        "some presses were not seen: the machine was too busy"));
    EXPECT_EQ(world.status.dropped, (RecorderStatus::Dropped{.times = 3, .last = world.now}));
}

TEST(LiveRecorder, CountsInTheZoneThatTheMachineIsSetTo) {
    World world;
    const auto travel = [&](EventListener&) { world.locked([&] { world.zone = "Asia/Tokyo"; }); };
    world.run({plugKeyboard, press, travel, press, world.nextMinute(), world.untilStored(1), press});
    EXPECT_THAT(world.stored, ElementsAre("2026-09-20 2 0", "2026-09-21 1 0"));
}

TEST(LiveRecorder, KeepsWhatFailsToBeStoredAndSaysSoOnce) {
    World world;
    world.run({plugKeyboard, press, world.disk(true), world.nextMinute(), world.untilTold("cannot store"),
               press, world.nextMinute(), press, world.nextMinute(), world.disk(false), world.nextMinute(),
               world.untilStored(1)});
    EXPECT_THAT(world.stored, ElementsAre("2026-09-20 3 0"));
    EXPECT_EQ(world.updates, 1);
    EXPECT_THAT(world.told, ElementsAre("listening to A keyboard (/dev/input/event5)", "ready",
                                        "cannot store: days/2026-09-20.org: No space left on device; the "
                                        "counts are kept, and storing them is tried again",
                                        "stored again, with what was kept"));
}

TEST(LiveRecorder, FailsInTheEndSayingWhatIsNotStored) {
    World world;
    try {
        world.run({plugKeyboard, press, world.disk(true)});
        FAIL() << "no failure";
    } catch (const Failure& failure) {
        EXPECT_STREQ(
            failure.what(),
            "days/2026-09-20.org: No space left on device: not stored: 1 press, 0 clicks of 2026-09-20");
    }
}

TEST(LiveRecorder, EndsWhileItWaitsToStartSayingWhatIsNotStored) {
    World world;
    world.waitToStart = [](const auto& endsSoon) {
        while (!endsSoon()) {
        }
        throw Failure("data", "another program is writing in it");
    };
    try {
        world.run({plugKeyboard, press});
        FAIL() << "no failure";
    } catch (const Failure& failure) {
        EXPECT_STREQ(failure.what(),
                     "data: another program is writing in it: not stored: 1 press, 0 clicks of 2026-09-20");
    }
}

TEST(LiveRecorder, StoresAllThatWasPressedBeforeAFailureEndsIt) {
    World world;
    bool isPressed = false;
    world.eachMinute = [&] {
        std::unique_lock lock(world.mutex);
        EXPECT_TRUE(world.changed.wait_for(lock, 30s, [&] { return isPressed; }));
        throw Failure("anything", "wrong");
    };
    const auto pressLast = [&](EventListener& listener) {
        press(listener);
        world.locked([&] { isPressed = true; });
    };
    EXPECT_THROW(world.run({plugKeyboard, press, world.nextMinute(), pressLast}), Failure);
    EXPECT_THAT(world.stored, ElementsAre("2026-09-20 2 0"));
}

TEST(LiveRecorder, CountsPausedMinutesAndNothingElseBetweenTwoSignals) {
    World world;
    const auto toggle = [](EventListener&) { std::raise(SIGUSR1); };
    world.run({plugKeyboard, press, toggle, press, world.nextMinute(), world.untilStored(1), press,
               world.nextMinute(), world.untilStored(2), toggle, press});
    EXPECT_THAT(world.stored, ElementsAre("2026-09-20 1 1", "2026-09-20 0 1", "2026-09-20 1 0"));
    EXPECT_THAT(
        world.told,
        ElementsAre("listening to A keyboard (/dev/input/event5)", "ready", "paused: nothing is counted",
                    "there is no home for it: a restart ends the pause", "counting again"));
}

TEST(LiveRecorder, GoesByWhenAPressWasMadeWhereAPauseHasEndedSince) {
    World world;
    world.pauses.pause({.since = world.now, .until = world.now + 75s});
    const auto read = [](EventListener& listener) {
        for (const auto ago : {50s, 46s, 44s}) pressAgo(listener, ago);
    };
    world.run({plugKeyboard, world.nextMinute(), world.untilStored(1), world.nextMinute(), read});
    EXPECT_THAT(world.stored, ElementsAre("2026-09-20 0 1", "2026-09-20 1 0"));
}

TEST(LiveRecorder, RefusesToWaitWithoutAKeyboardAndNamesTheRemedyOnceAtTheEnd) {
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
                            "Another (/dev/input/event7): cannot be read: Permission denied",
                            HasSubstr("`tappora setup service` lets the recorder alone read them")));
}

}  // namespace
}  // namespace tappora

#pragma once

#include <functional>
#include <string>
#include <thread>
#include <utility>

#include "app/common/control/recorder_status.h"
#include "app/common/system/signals.h"
#include "app/recorder/day_book.h"
#include "app/recorder/device_reader.h"
#include "app/recorder/event_rules.h"
#include "app/recorder/event_source.h"
#include "app/recorder/hand_over.h"
#include "app/recorder/pause_switch.h"
#include "core/foundation/calendar.h"

namespace tappora {

/// What a recorder takes from the world around it.
struct LiveWorld {
    std::function<tapcore::Instant()>
        now;                           ///< called by the thread that reads, all others by the one that stores
    std::function<void()> eachMinute;  ///< called before what the minute held is stored
    std::function<tapcore::Calendar()> calendar;  ///< of the time zone; asked for each minute
    /// Called once a keyboard is read; what it throws ends it, and nothing is stored. While it waits for
    /// another program, it calls `endsSoon`, which waits a moment and says whether a signal ends it.
    std::function<void(const std::function<bool()>& endsSoon)> ready;
    DayBook::Write tryWrite;  ///< fails when another program is writing in the folder
    DayBook::Write write;     ///< the same, after it has waited for it for a while: nothing can end the wait
    std::function<void()> stored;  ///< called when counts were stored; throws nothing
    /// Called each minute when all that was counted is stored; throws nothing.
    std::function<void()> allStored = [] {};
    /// Tells the user what happens: which devices are listened to, what fails. Never a key. Does not wait for
    /// who reads it.
    std::function<void(const std::string& text)> tell;
    /// Shows lines of the event watch, in the same way; false when their reader has gone. None: nothing is
    /// watched.
    std::function<bool(const Lines& lines)> watch{};
    /// Does what else the storing thread has to do, until this file is readable. None: there is nothing.
    std::function<void(int handedOver)> serve{};
    std::function<void()> followPause{};  ///< called when a pause may have begun or ended
};

/// Counts what input devices do, until a signal ends it, and stores it every minute, so that a crash loses
/// one minute at most. A thread of its own reads the devices and counts (DeviceReader), so that a slow disk
/// never stops the reading; the caller's thread stores and tells.
///
/// SIGINT, SIGTERM, SIGHUP, and a reader of the watch that has gone, end it; SIGUSR1 pauses it, and ends a
/// pause, as the other threads may. What fails to be stored stays, and is tried again with each minute.
class LiveRecorder {
  public:
    LiveRecorder(EventRules::Options options, PauseSwitch& pauses, LiveWorld world)
        : options_(std::move(options)), pauses_(pauses), world_(std::move(world)) {}

    /// Listens to the source until a signal ends it, and stores what was counted. Failure when no keyboard of
    /// the source can be read, and when what was counted could not be stored in the end.
    void run(EventSource& source);

    /// What it is doing, without the folder; for the thread that stores.
    RecorderStatus status() const;

  private:
    enum class Next { goOn, stop };

    void makeReady(HandOver& handOver);
    void storeAllThatComes(HandOver& handOver, std::jthread& reading);
    void keepAllThatComes(HandOver& handOver);
    Next take(Harvest&& harvest, HandOver& handOver);
    void note(const Harvest& harvest);
    void finish();
    void store();
    void storeBy(const DayBook::Write& write);
    std::string unstored() const;

    EventRules::Options options_;
    PauseSwitch& pauses_;
    LiveWorld world_;
    DayBook book_;
    RecorderStatus status_;
    tapcore::Instant now_{};  ///< of what was handed over last
};

}  // namespace tappora

#pragma once

#include <functional>
#include <set>
#include <string>
#include <system_error>

#include "app/common/wake_ups.h"
#include "app/recorder/counting_clock.h"
#include "app/recorder/day_book.h"
#include "app/recorder/event_rules.h"
#include "app/recorder/event_source.h"
#include "core/counting/counter.h"
#include "core/foundation/calendar.h"

namespace tappora {

/// What a recorder takes from the world around it.
struct LiveWorld {
    std::function<tapcore::Instant()> now;
    std::function<std::string()> zone;  ///< the time zone's name; asked for each minute
    DayBook::Write tryWrite;       ///< fails when another program is writing in the folder
    DayBook::Write write;          ///< waits for it
    std::function<void()> stored;  ///< called when counts were stored; throws nothing
    /// Tells the user what happens: which devices are listened to, what fails. Never a key.
    std::function<void(const std::string& text)> tell;
};

/// Counts what input devices do, until a signal ends it, and stores it every minute, so that a crash loses
/// one minute at most. One thread, one loop: it waits for the devices, for the minute to end, and for
/// signals.
///
/// SIGINT, SIGTERM, SIGHUP, and a reader of the watch that is gone (SIGPIPE), end it; SIGUSR1 pauses it, and
/// ends a pause. What fails to be stored stays, and is tried again with each minute.
class LiveRecorder : private EventListener {
  public:
    LiveRecorder(EventRules::Options options, EventRules::Watch watch, LiveWorld world);

    /// Listens to the source until a signal ends it, and stores what was counted; gives that signal. Failure
    /// when no keyboard of the source can be read, and when what was counted could not be stored in the end.
    int run(EventSource& source);

  private:
    void plugged(DeviceId id, const InputDevice& device) override;
    void unplugged(DeviceId id) override;
    void unreadable(const InputDevice& device, std::error_code why) override;
    void happened(DeviceId id, const InputEvent& event) override;

    void requireKeyboard() const;
    int listen(EventSource& source, const SignalQueue& signals);
    void finish();
    void goTo(tapcore::Instant now);
    void store();
    void storeBy(const DayBook::Write& write);
    void togglePause();
    std::string unstored() const;

    LiveWorld world_;
    std::string zone_;
    tapcore::Counter counter_;
    DayBook book_;
    CountingClock clock_;
    EventRules rules_;
    std::set<DeviceId> keyboards_;
    bool foundDevice_ = false;
    bool wasRemedyTold_ = false;
    bool isFailing_ = false;  ///< to store
};

}  // namespace tappora

#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <stop_token>
#include <string>
#include <system_error>

#include "app/common/system/signals.h"
#include "app/recorder/counting_clock.h"
#include "app/recorder/day_book.h"
#include "app/recorder/event_rules.h"
#include "app/recorder/event_source.h"
#include "app/recorder/hand_over.h"
#include "app/recorder/input_device.h"
#include "app/recorder/pause_switch.h"
#include "core/counting/counter.h"
#include "core/foundation/calendar.h"

namespace tappora {

/// Reads input devices and counts what they do. It writes nothing: what it has it hands over, so that no disk
/// and no reader of its output holds up the reading. (The kernel keeps 64 events of a device, and drops what
/// comes after them.)
class DeviceReader : private EventListener {
  public:
    /// What time it is.
    using Now = std::function<tapcore::Instant()>;

    DeviceReader(EventSource& source, EventRules::Options options, PauseSwitch& pauses, bool isWatched,
                 Now now, tapcore::Calendar calendar);

    /// Finds the devices that are there, and gives what is to be told of them. Failure, told what there is,
    /// when no keyboard among them can be read.
    Harvest findDevices();
    void requireKeyboard() const;

    /// Reads and hands over, until a signal or the stop token ends it. SIGUSR1 pauses it, and ends a pause;
    /// every other signal is an end. The hand-over has ended then, with what failed.
    void read(const SignalQueue& signals, const std::stop_token& stop, HandOver& handOver);

  private:
    void plugged(DeviceId id, const InputDevice& device) override;
    void unplugged(DeviceId id) override;
    void unreadable(const InputDevice& device, std::error_code why) override;
    void happened(DeviceId id, const InputEvent& event, std::chrono::milliseconds ago) override;
    void dropped() override;

    EventRules::Watch watch();
    void listen(const SignalQueue& signals, const std::stop_token& stop, HandOver& handOver);
    void dispatch();
    void goTo(tapcore::Instant moment);
    bool hasKeyboard() const;
    void noteDevices();
    /// What is there to be handed over.
    Harvest harvest();

    EventSource& source_;
    PauseSwitch& pauses_;
    Now now_;
    Harvest harvest_;
    tapcore::Counter counter_;
    CountingClock clock_;
    EventRules rules_;
    std::map<DeviceId, InputDevice> devices_;
    std::map<std::string, DeviceList::Unreadable> unreadable_;  ///< by node
    std::int64_t drops_ = 0;                                    ///< of the current minute
    bool isForbidden_ = false;  ///< to read a device that came with this dispatch
    bool wasRemedyTold_ = false;
};

}  // namespace tappora

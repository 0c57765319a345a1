#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "app/common/control/recorder_status.h"
#include "app/recorder/day_book.h"
#include "core/foundation/calendar.h"
#include "core/foundation/descriptor.h"

namespace tappora {

/// Lines to be shown. Those that are too many are dropped and counted.
struct Lines {
    static constexpr std::size_t most = 4096;

    std::vector<std::string> kept;
    std::int64_t dropped = 0;

    void add(std::string line);
    void add(Lines&& later);
};

/// What was read from the devices in a while.
struct Harvest {
    tapcore::Instant at;  ///< when it was handed over
    DayBook counts;       ///< of minutes that are over
    bool hasEndedMinute = false;
    std::int64_t drops = 0;             ///< how often the kernel dropped events; told with the minute's end
    std::optional<DeviceList> devices;  ///< when they have changed
    Lines told;                         ///< for the user
    Lines watched;                      ///< of the event watch

    bool isEmpty() const;
    void add(Harvest&& later);
};

/// What passes between the thread that reads the devices and the one that stores. Neither waits for the other
/// to be done with something: the reading one is never held up, the storing one finds everything that came in
/// the meantime.
class HandOver {
  public:
    HandOver();

    // For the reading thread.

    void give(Harvest&& harvest);
    /// Nothing follows; `failure` says why, when that is one.
    void end(std::exception_ptr failure);
    /// The calendar to count by from now on, when there is a new one.
    std::optional<tapcore::Calendar> newCalendar();

    // For the storing thread.

    /// Readable when there is something to take, or no more follows.
    int descriptor() const { return bell_.get(); }
    /// Waits for something to be given; nothing when no more follows. Throws the failure that reading ended
    /// with once all was taken.
    std::optional<Harvest> take();
    /// Waits so long for the end; whether it has come.
    bool endsWithin(std::chrono::milliseconds time);
    void changeCalendar(tapcore::Calendar calendar);

  private:
    std::mutex mutex_;
    std::condition_variable given_;  ///< or ended
    Harvest harvest_;
    std::optional<tapcore::Calendar> calendar_;
    bool hasEnded_ = false;
    std::exception_ptr failure_;
    tapcore::Descriptor bell_;
};

}  // namespace tappora

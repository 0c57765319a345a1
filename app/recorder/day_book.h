#pragma once

#include <cstdint>
#include <functional>
#include <map>

#include "core/counting/counter.h"
#include "core/counting/day.h"
#include "core/counting/tally.h"

namespace tappora {

/// What was counted for a day, and is not yet in its file.
struct DayCounts {
    tapcore::Tally tally;
    std::int64_t peakPerMinute = 0;
    std::int64_t pausedMinutes = 0;

    void add(const DayCounts& later);
    bool isEmpty() const { return tally.isEmpty() && pausedMinutes == 0; }
    bool operator==(const DayCounts&) const = default;
};

/// Keeps what was counted, by day, until it is stored.
class DayBook {
  public:
    /// Stores counts in a day's file; what it throws means that it did not.
    using Write = std::function<void(const tapcore::Day& day, const DayCounts& counts)>;

    void add(const tapcore::Day& day, const tapcore::Counter::Drained& drained, std::int64_t pausedMinutes);

    void add(const DayBook& other);

    /// Hands every day to `write`, by date, and forgets those it stored. The others stay for another time;
    /// the first failure is thrown on once all were tried.
    void store(const Write& write);

    const std::map<tapcore::Day, DayCounts>& days() const { return days_; }

    /// Forgets of all days which presses were of a key, and the shortcuts with it; the presses themselves
    /// stay.
    void forgetKey(tapcore::KeyCode key);

  private:
    std::map<tapcore::Day, DayCounts> days_;
};

}  // namespace tappora

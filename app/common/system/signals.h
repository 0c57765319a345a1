#pragma once

#include <csignal>
#include <initializer_list>
#include <optional>

#include "core/foundation/calendar.h"
#include "core/foundation/descriptor.h"

namespace tappora {

/// Signals as something to read, and nothing else: they are held back from the process while this lives.
class SignalQueue {
  public:
    explicit SignalQueue(std::initializer_list<int> signals);
    SignalQueue(const SignalQueue&) = delete;
    SignalQueue& operator=(const SignalQueue&) = delete;
    ~SignalQueue();

    int descriptor() const { return file_.get(); }
    /// The next signal that came, or nothing.
    std::optional<int> next() const;

  private:
    sigset_t before_{};  ///< those held back before
    tapcore::Descriptor file_;
};

/// Becomes readable at a time of the system clock, or, if the machine sleeps then, when it wakes; and at once
/// when that clock is set.
class Alarm {
  public:
    Alarm();

    int descriptor() const { return file_.get(); }
    /// Sets the moment, instead of an earlier one. False when the clock was set in the meantime: what time it
    /// is should be asked again.
    [[nodiscard]] bool set(tapcore::Instant moment) const;

  private:
    tapcore::Descriptor file_;
};

}  // namespace tappora

#pragma once

#include "core/foundation/calendar.h"
#include "core/foundation/descriptor.h"

namespace tappora {

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

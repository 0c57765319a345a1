#pragma once

#include <array>
#include <cstdint>
#include <functional>

#include "app/recorder/input_event.h"
#include "app/recorder/recording.h"

namespace tappora {

/// Makes of one device's events, as the kernel gives them, what happened. Motion and wheels are put together
/// from a frame, which ends with SYN_REPORT: a wheel that tells its turns in steps and in parts of steps
/// turned once.
///
/// Fingers on a touchpad and pens are left out: what they mean depends on much that a recording does not
/// hold.
class EvdevFrames {
  public:
    using Emit = std::function<void(const InputEvent& event)>;

    void take(const RecordedEvent& event, const Emit& emit);
    /// Ends a frame that the recording broke off in.
    void finish(const Emit& emit);

  private:
    struct Wheel {
        std::int64_t steps = 0;
        std::int64_t parts = 0;  ///< 120 to a step

        double amount() const;
    };

    void addRelative(std::uint16_t code, std::int32_t value);
    void synchronize(std::uint16_t code, const Emit& emit);

    std::int64_t dx_ = 0;
    std::int64_t dy_ = 0;
    std::array<Wheel, 2> wheels_;  ///< by WheelEvent::Axis
    bool isLosing_ = false;        ///< the kernel dropped events: nothing counts until a frame is whole again
};

}  // namespace tappora

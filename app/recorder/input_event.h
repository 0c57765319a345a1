#pragma once

#include <cstdint>
#include <variant>

namespace tappora {

// What devices do, in one shape for devices listened to and devices recorded.

/// A key or a button, by its Linux code.
struct KeyEvent {
    enum class Action { release, press, repeat };

    std::uint16_t code = 0;
    Action action = Action::press;
};

/// A wheel turned, or fingers scrolled; the sign is the direction.
struct WheelEvent {
    enum class Axis { vertical, horizontal };

    static constexpr double step = 120;  ///< one step of a wheel

    Axis axis = Axis::vertical;
    double amount = 0;
};

/// The pointer moved, in screen points.
struct MotionEvent {
    double dx = 0;
    double dy = 0;
};

/// Events of the device were lost: which of its keys are held is no longer known.
struct LostEvents {};

using InputEvent = std::variant<KeyEvent, WheelEvent, MotionEvent, LostEvents>;

}  // namespace tappora

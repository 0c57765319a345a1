#include "app/recorder/evdev_frames.h"

#include <linux/input-event-codes.h>

#include <utility>

namespace tappora {

double EvdevFrames::Wheel::amount() const {
    return parts != 0 ? static_cast<double>(parts) : static_cast<double>(steps) * WheelEvent::step;
}

void EvdevFrames::take(const RecordedEvent& event, const Emit& emit) {
    if (event.type == EV_SYN) return synchronize(event.code, emit);
    if (isLosing_) return;
    if (event.type == EV_REL) return addRelative(event.code, event.value);
    if (event.type == EV_KEY && event.value >= 0 && event.value <= 2)
        emit(KeyEvent{event.code, static_cast<KeyEvent::Action>(event.value)});
}

void EvdevFrames::addRelative(std::uint16_t code, std::int32_t value) {
    Wheel& vertical = wheels_[static_cast<std::size_t>(WheelEvent::Axis::vertical)];
    Wheel& horizontal = wheels_[static_cast<std::size_t>(WheelEvent::Axis::horizontal)];
    switch (code) {
        case REL_X:
            dx_ += value;
            break;
        case REL_Y:
            dy_ += value;
            break;
        case REL_WHEEL:
            vertical.steps += value;
            break;
        case REL_HWHEEL:
            horizontal.steps += value;
            break;
        case REL_WHEEL_HI_RES:
            vertical.parts += value;
            break;
        case REL_HWHEEL_HI_RES:
            horizontal.parts += value;
            break;
        default:
            break;
    }
}

void EvdevFrames::synchronize(std::uint16_t code, const Emit& emit) {
    if (code == SYN_DROPPED) {
        *this = {};
        isLosing_ = true;
        emit(LostEvents{});
    } else if (code == SYN_REPORT) {
        isLosing_ = false;
        finish(emit);
    }
}

void EvdevFrames::finish(const Emit& emit) {
    if (dx_ != 0 || dy_ != 0) emit(MotionEvent{static_cast<double>(dx_), static_cast<double>(dy_)});
    for (const auto axis : {WheelEvent::Axis::vertical, WheelEvent::Axis::horizontal}) {
        const double amount = wheels_[static_cast<std::size_t>(axis)].amount();
        if (amount != 0) emit(WheelEvent{axis, amount});
    }
    *this = {};
}

}  // namespace tappora

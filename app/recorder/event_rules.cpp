#include "app/recorder/event_rules.h"

#include <linux/input-event-codes.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tappora {
namespace {

namespace EventWatch = tapcore::EventWatch;
using EventWatch::Kind;
using tapcore::Counter;
using tapcore::Modifiers;

/// More steps than this at once are a device's fault, as a jump of the pointer is.
constexpr double mostSteps = 1000;

struct ButtonWords {
    Counter::Button button;
    Kind kind;
};

ButtonWords wordsFor(std::uint16_t code) {
    if (code == BTN_LEFT) return {Counter::Button::left, Kind::click};
    if (code == BTN_RIGHT) return {Counter::Button::right, Kind::rightClick};
    return {Counter::Button::middle, Kind::otherClick};
}

}  // namespace

void EventRules::plug(DeviceId id, const InputDevice& device) {
    unplug(id);
    const Source& source = sources_[id] = Source{.id = id, .device = device};
    if (!device.isVirtual) realDevices_.insert(device.identity());
    if (isPosting(source) || !options_.heldOn) return;
    for (const LinuxKey key : options_.heldOn(id).value_or(std::vector<LinuxKey>())) held_.assume(id, key);
}

void EventRules::unplug(DeviceId id) {
    const auto found = sources_.find(id);
    if (found == sources_.end()) return;
    const InputDevice& device = found->second.device;
    if (!device.isVirtual) realDevices_.erase(realDevices_.find(device.identity()));
    sources_.erase(found);
    held_.releaseAll(id);
}

bool EventRules::isPosting(const Source& source) const {
    const InputDevice& device = source.device;
    return device.isVirtual && !isRemapper(device, options_.remappers) &&
           !realDevices_.contains(device.identity());
}

void EventRules::take(DeviceId id, const InputEvent& event) {
    const auto found = sources_.find(id);
    if (found == sources_.end()) return;
    std::visit([&](const auto& kind) { take(found->second, kind); }, event);
}

void EventRules::take(Source& source, const KeyEvent& event) {
    followModifier(source, event);
    if (event.action == KeyEvent::Action::release || paused_) return;
    if (isMouseButton(event.code)) return click(source, event);
    press(source, event);
}

void EventRules::followModifier(const Source& source, const KeyEvent& event) {
    if (modifierOf(event.code).isEmpty() || isPosting(source)) return;
    if (event.action == KeyEvent::Action::release) held_.release(source.id, event.code);
    else held_.press(source.id, event.code);
}

void EventRules::press(const Source& source, const KeyEvent& event) {
    const bool isModifier = isModifierKey(event.code);
    const Kind kind = isModifier ? Kind::modifier : Kind::key;
    if (const auto why = objection(source, event)) return tell(kind, *why);
    if (options_.isPractising && options_.isPractising()) return tellPractice(kind);
    if (const auto code = macKeyCode(event.code, options_.board)) {
        counter_.press(*code, isModifier ? Modifiers{} : heldAtPressOn(source));
        return tell(kind, EventWatch::Counted{});
    }
    if (!watch_) return;
    if (const auto name = linuxKeyName(event.code))
        watch_("key — no key code for " + *name + " — not counted");
}

void EventRules::click(const Source& source, const KeyEvent& event) {
    const auto [button, kind] = wordsFor(event.code);
    if (const auto why = objection(source, event)) return tell(kind, *why);
    if (!options_.countsMouse) return tell(kind, EventWatch::MouseOff{});
    counter_.click(button);
    tell(kind, EventWatch::Counted{});
}

std::optional<EventWatch::Verdict> EventRules::objection(const Source& source, const KeyEvent& event) const {
    if (isPosting(source)) return EventWatch::PostedBy{source.device.name};
    if (event.action == KeyEvent::Action::repeat) return EventWatch::Repeated{};
    return std::nullopt;
}

void EventRules::tell(Kind kind, const EventWatch::Verdict& verdict) const {
    if (watch_) watch_(EventWatch::line(kind, verdict));
}

void EventRules::tellPractice(Kind kind) const {
    if (watch_) watch_(std::string(kind == Kind::key ? "key" : "modifier") + " — practice — not counted");
}

bool EventRules::countsPointer(const Source& source) const {
    return options_.countsMouse && !paused_ && !isPosting(source);
}

void EventRules::take(Source& source, const WheelEvent& event) {
    if (!countsPointer(source) || !(std::abs(event.amount) <= mostSteps * WheelEvent::step)) return;
    double& turned = source.turned[static_cast<std::size_t>(event.axis)];
    if (std::signbit(turned) != std::signbit(event.amount))
        turned = 0;  // turned back: what was begun is void
    turned += event.amount;
    for (; std::abs(turned) >= WheelEvent::step; turned -= std::copysign(WheelEvent::step, turned))
        counter_.scroll();
}

void EventRules::take(Source& source, const MotionEvent& event) {
    if (countsPointer(source)) counter_.moved(std::hypot(event.dx, event.dy));
}

void EventRules::take(Source& source, LostEvents) { held_.releaseAll(source.id); }

Modifiers EventRules::heldAtPressOn(const Source& source) {
    if (options_.heldOn) held_.check(source.id, options_.heldOn);
    return held_.all();
}

}  // namespace tappora

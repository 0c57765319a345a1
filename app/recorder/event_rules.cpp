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
    sources_[id] = Source{.device = device};
    // A device may be the copy of one that came only now.
    for (auto& [other, source] : sources_) source.isPosting = isPosting(source.device);
}

void EventRules::unplug(DeviceId id) { sources_.erase(id); }

bool EventRules::isPosting(const InputDevice& device) const {
    if (!device.isVirtual || isRemapper(device, options_.remappers)) return false;
    return std::none_of(sources_.begin(), sources_.end(),
                        [&](const auto& entry) { return isCopy(device, entry.second.device); });
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

void EventRules::followModifier(Source& source, const KeyEvent& event) {
    if (modifierOf(event.code).isEmpty() || source.isPosting) return;
    std::erase(source.held, event.code);
    if (event.action != KeyEvent::Action::release) source.held.push_back(event.code);
}

void EventRules::press(const Source& source, const KeyEvent& event) {
    const bool isModifier = isModifierKey(event.code);
    const Kind kind = isModifier ? Kind::modifier : Kind::key;
    if (const auto why = objection(source, event)) return tell(kind, *why);
    if (options_.isPractising && options_.isPractising()) return tellPractice(kind);
    if (const auto code = macKeyCode(event.code, options_.board)) {
        counter_.press(*code, isModifier ? Modifiers{} : held());
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
    if (source.isPosting) return EventWatch::PostedBy{source.device.name};
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
    return options_.countsMouse && !source.isPosting && !paused_;
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

void EventRules::take(Source& source, LostEvents) { source.held.clear(); }

Modifiers EventRules::held() const {
    Modifiers held;
    for (const auto& [id, source] : sources_)
        for (const LinuxKey key : source.held) held.insert(modifierOf(key));
    return held;
}

}  // namespace tappora

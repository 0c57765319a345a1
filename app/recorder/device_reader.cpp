#include "app/recorder/device_reader.h"

#include <fmt/format.h>
#include <poll.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <exception>
#include <utility>

#include "app/common/notices.h"
#include "app/common/program.h"
#include "app/common/system/alarm.h"
#include "app/recorder/stop_bell.h"

namespace tappora {
namespace {

EventRules::Options asking(const EventSource& source, EventRules::Options options) {
    options.heldOn = [&source](DeviceId id) { return source.heldModifiers(id); };
    return options;
}

/// Waits until one of the files can be read, or another signal came.
void waitFor(std::array<int, 4> files) {
    std::array<pollfd, 4> waiting{};
    for (std::size_t i = 0; i < files.size(); ++i)
        waiting[i] = {.fd = files[i], .events = POLLIN, .revents = 0};
    if (::poll(waiting.data(), waiting.size(), -1) < 0 && errno != EINTR)
        throw std::system_error(errno, std::generic_category(), "input devices");
}

}  // namespace

DeviceReader::DeviceReader(EventSource& source, EventRules::Options options, PauseSwitch& pauses,
                           bool isWatched, Now now, tapcore::Calendar calendar)
    : source_(source),
      pauses_(pauses),
      now_(std::move(now)),
      clock_(std::move(calendar), counter_, harvest_.counts),
      rules_(asking(source, std::move(options)), counter_, isWatched ? watch() : EventRules::Watch{}) {}

EventRules::Watch DeviceReader::watch() {
    return [this](const std::string& line) { harvest_.watched.add(line); };
}

Harvest DeviceReader::findDevices() {
    goTo(now_());
    dispatch();
    return harvest();
}

void DeviceReader::requireKeyboard() const {
    if (devices_.empty() && unreadable_.empty())
        throw Failure("input devices", "none found; is udev running?");
    if (!hasKeyboard()) throw Failure("input devices", "there is no keyboard that can be read");
}

void DeviceReader::read(const SignalQueue& signals, const std::stop_token& stop, HandOver& handOver) {
    std::exception_ptr failure;
    try {
        listen(signals, stop, handOver);
    } catch (...) {
        failure = std::current_exception();
    }
    clock_.finish();
    harvest_.at = now_();
    harvest_.drops = drops_;
    handOver.give(std::move(harvest_));
    handOver.end(failure);
}

void DeviceReader::listen(const SignalQueue& signals, const std::stop_token& stop, HandOver& handOver) {
    const Alarm minuteEnd;
    const StopBell stopBell(stop);
    while (!stop.stop_requested()) {
        if (minuteEnd.set(clock_.minuteEnds()))
            waitFor(
                {source_.descriptor(), minuteEnd.descriptor(), signals.descriptor(), stopBell.descriptor()});
        if (auto calendar = handOver.newCalendar()) clock_.setCalendar(std::move(*calendar));
        const tapcore::Instant now = now_();
        dispatch();  // first, since what was made before now may belong to the minute before
        goTo(now);
        while (const auto signal = signals.next()) {
            if (*signal != SIGUSR1) return;
            pauses_.toggle(now);
        }
        handOver.give(harvest());
    }
}

void DeviceReader::dispatch() {
    source_.dispatch(*this);
    if (std::exchange(isForbidden_, false) && !std::exchange(wasRemedyTold_, true))
        harvest_.told.add(fmt::format("{}: {}", devicesNotice.what, devicesNotice.remedy));
}

void DeviceReader::goTo(tapcore::Instant moment) {
    // A minute counts as paused by its last moment, however late it is ended.
    if (clock_.hasBegun()) {
        const tapcore::Instant last = clock_.minuteEnds() - std::chrono::milliseconds(1);
        const tapcore::Instant now = now_();
        clock_.setPaused(pauses_.isPaused(now, now - last));
    }
    if (clock_.advance(moment)) harvest_.hasEndedMinute = true;
}

Harvest DeviceReader::harvest() {
    harvest_.at = now_();
    if (harvest_.hasEndedMinute) harvest_.drops = std::exchange(drops_, 0);
    return std::exchange(harvest_, {});
}

void DeviceReader::plugged(DeviceId id, const InputDevice& device) {
    harvest_.told.add("listening to " + device.description());
    devices_[id] = device;
    unreadable_.erase(device.node);
    noteDevices();
    rules_.plug(id, device);
}

void DeviceReader::unplugged(DeviceId id) {
    rules_.unplug(id);
    const bool hadKeyboard = hasKeyboard();
    devices_.erase(id);
    noteDevices();
    if (hadKeyboard && !hasKeyboard()) harvest_.told.add("no keyboard is left; waiting for one");
}

void DeviceReader::unreadable(const InputDevice& device, std::error_code why) {
    const bool isForbidden = why == std::errc::permission_denied || why == std::errc::operation_not_permitted;
    harvest_.told.add(device.description() + ": cannot be read: " + why.message());
    unreadable_[device.node] = {device.description(), why.message(), isForbidden};
    noteDevices();
    isForbidden_ = isForbidden_ || isForbidden;
}

bool DeviceReader::hasKeyboard() const {
    return std::any_of(devices_.begin(), devices_.end(),
                       [](const auto& entry) { return entry.second.isKeyboard; });
}

void DeviceReader::noteDevices() {
    DeviceList list;
    for (const auto& [id, device] : devices_) list.read.push_back({device.description(), device.isKeyboard});
    for (const auto& [node, device] : unreadable_) list.unreadable.push_back(device);
    harvest_.devices = std::move(list);
}

void DeviceReader::happened(DeviceId id, const InputEvent& event, std::chrono::milliseconds ago) {
    const tapcore::Instant now = now_();
    const bool isPaused = pauses_.isPaused(now, ago);
    if (!isPaused) goTo(now - ago);
    rules_.setPaused(isPaused);
    rules_.take(id, event);
}

void DeviceReader::dropped() { ++drops_; }

}  // namespace tappora

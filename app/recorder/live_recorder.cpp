#include "app/recorder/live_recorder.h"

#include <fmt/format.h>
#include <poll.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <exception>
#include <optional>
#include <string>
#include <utility>

#include "app/common/program.h"

namespace tappora {
namespace {

constexpr const char* remedy =
    "members of the group `input` may read them: `sudo usermod -aG input $USER`, and log in again; but then "
    "every program you start can read every key, passwords too. docs/recording.md shows how to open them to "
    "the recorder alone";

/// Waits until one of the files can be read, or a signal that is none of ours came.
void waitFor(std::array<int, 3> files) {
    std::array<pollfd, 3> waiting{};
    for (std::size_t i = 0; i < files.size(); ++i)
        waiting[i] = {.fd = files[i], .events = POLLIN, .revents = 0};
    if (::poll(waiting.data(), waiting.size(), -1) < 0 && errno != EINTR)
        throw std::system_error(errno, std::generic_category(), "input devices");
}

}  // namespace

LiveRecorder::LiveRecorder(EventRules::Options options, EventRules::Watch watch, LiveWorld world)
    : world_(std::move(world)),
      zone_(world_.zone()),
      clock_(tapcore::Calendar(zone_), counter_, book_),
      rules_(std::move(options), counter_, std::move(watch)) {}

int LiveRecorder::run(EventSource& source) {
    const SignalQueue signals({SIGINT, SIGTERM, SIGHUP, SIGPIPE, SIGUSR1});
    goTo(world_.now());
    source.dispatch(*this);
    requireKeyboard();
    const int ending = listen(source, signals);
    finish();
    return ending;
}

void LiveRecorder::requireKeyboard() const {
    if (!foundDevice_) throw Failure("input devices", "there are none; is udev running?");
    if (keyboards_.empty()) throw Failure("input devices", "there is no keyboard that can be read");
}

int LiveRecorder::listen(EventSource& source, const SignalQueue& signals) try {
    const Alarm minuteEnd;
    while (true) {
        if (minuteEnd.set(clock_.minuteEnds()))
            waitFor({source.descriptor(), minuteEnd.descriptor(), signals.descriptor()});
        goTo(world_.now());
        source.dispatch(*this);
        while (const auto signal = signals.next()) {
            if (*signal != SIGUSR1) return *signal;
            togglePause();
        }
    }
} catch (...) {
    finish();
    throw;
}

void LiveRecorder::goTo(tapcore::Instant now) {
    if (!clock_.advance(now)) return;
    store();
    if (const std::string zone = world_.zone(); std::exchange(zone_, zone) != zone)
        clock_.setCalendar(tapcore::Calendar(zone));
}

void LiveRecorder::store() {
    try {
        storeBy(world_.tryWrite);
        if (std::exchange(isFailing_, false)) world_.tell("stored again, with what was kept");
    } catch (const std::exception& error) {
        if (!std::exchange(isFailing_, true))
            world_.tell(std::string("cannot store: ") + error.what() +
                        "; the counts are kept and tried again");
    }
}

void LiveRecorder::storeBy(const DayBook::Write& write) {
    if (book_.days().empty()) return;
    book_.store(write);
    world_.stored();
}

void LiveRecorder::finish() {
    clock_.finish();
    try {
        storeBy(world_.write);
    } catch (const std::exception& error) {
        throw Failure(error.what(), "lost are " + unstored());
    }
}

/// "presses 120, clicks 7 of 2026-09-20; …".
std::string LiveRecorder::unstored() const {
    std::string list;
    for (const auto& [day, counts] : book_.days())
        list += fmt::format("{}presses {}, clicks {} of {}", list.empty() ? "" : "; ", counts.tally.total(),
                            counts.tally.mouseTotal().allClicks(), day.description());
    return list;
}

void LiveRecorder::togglePause() {
    const bool pauses = !clock_.isPaused();
    clock_.setPaused(pauses);
    rules_.setPaused(pauses);
    world_.tell(pauses ? "paused: nothing is counted" : "counting again");
}

void LiveRecorder::plugged(DeviceId id, const InputDevice& device) {
    foundDevice_ = true;
    world_.tell("listening to " + device.description());
    if (device.isKeyboard) keyboards_.insert(id);
    rules_.plug(id, device);
}

void LiveRecorder::unplugged(DeviceId id) {
    rules_.unplug(id);
    if (keyboards_.erase(id) == 1 && keyboards_.empty()) world_.tell("no keyboard is left; waiting for one");
}

void LiveRecorder::unreadable(const InputDevice& device, std::error_code why) {
    foundDevice_ = true;
    world_.tell(device.description() + ": cannot be read: " + why.message());
    const bool isForbidden = why == std::errc::permission_denied || why == std::errc::operation_not_permitted;
    if (isForbidden && !std::exchange(wasRemedyTold_, true)) world_.tell(remedy);
}

void LiveRecorder::happened(DeviceId id, const InputEvent& event) {
    goTo(world_.now());
    rules_.take(id, event);
}

}  // namespace tappora

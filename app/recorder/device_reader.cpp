#include "app/recorder/device_reader.h"

#include <poll.h>
#include <sys/eventfd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <exception>
#include <utility>

#include "app/common/program.h"
#include "app/common/system/alarm.h"
#include "core/foundation/descriptor.h"

namespace tappora {
namespace {

constexpr const char* remedy =
    "members of the group `input` may read them: `sudo usermod -aG input $USER`, and log in again; but then "
    "every program you start can read every key, passwords too. docs/recording.md shows how to open them to "
    "the recorder alone";

/// Becomes readable when a stop is asked for.
class StopBell {
  public:
    explicit StopBell(const std::stop_token& stop)
        : file_(::eventfd(0, EFD_CLOEXEC)), onStop_(stop, Ring{file_.get()}) {
        if (!file_.isOpen()) throw std::system_error(errno, std::generic_category(), "stop");
    }
    int descriptor() const { return file_.get(); }

  private:
    struct Ring {
        int file;
        void operator()() const { ::eventfd_write(file, 1); }
    };

    tapcore::Descriptor file_;
    std::stop_callback<Ring> onStop_;
};

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

DeviceReader::DeviceReader(EventSource& source, EventRules::Options options, bool isWatched, Now now,
                           tapcore::Calendar calendar)
    : source_(source),
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
    if (!foundDevice_) throw Failure("input devices", "none found; is udev running?");
    if (keyboards_.empty()) throw Failure("input devices", "there is no keyboard that can be read");
}

void DeviceReader::read(const SignalQueue& signals, const std::stop_token& stop, HandOver& handOver) {
    std::exception_ptr failure;
    try {
        listen(signals, stop, handOver);
    } catch (...) {
        failure = std::current_exception();
    }
    clock_.finish();
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
            togglePause();
        }
        handOver.give(harvest());
    }
}

void DeviceReader::dispatch() {
    source_.dispatch(*this);
    if (std::exchange(isForbidden_, false) && !std::exchange(wasRemedyTold_, true)) harvest_.told.add(remedy);
}

void DeviceReader::goTo(tapcore::Instant moment) {
    if (clock_.advance(moment)) harvest_.hasEndedMinute = true;
}

Harvest DeviceReader::harvest() {
    if (harvest_.hasEndedMinute) harvest_.drops = std::exchange(drops_, 0);
    return std::exchange(harvest_, {});
}

void DeviceReader::togglePause() {
    const bool pauses = !clock_.isPaused();
    clock_.setPaused(pauses);
    rules_.setPaused(pauses);
    harvest_.told.add(pauses ? "paused: nothing is counted" : "counting again");
}

void DeviceReader::plugged(DeviceId id, const InputDevice& device) {
    foundDevice_ = true;
    harvest_.told.add("listening to " + device.description());
    if (device.isKeyboard) keyboards_.insert(id);
    rules_.plug(id, device);
}

void DeviceReader::unplugged(DeviceId id) {
    rules_.unplug(id);
    if (keyboards_.erase(id) == 1 && keyboards_.empty())
        harvest_.told.add("no keyboard is left; waiting for one");
}

void DeviceReader::unreadable(const InputDevice& device, std::error_code why) {
    foundDevice_ = true;
    harvest_.told.add(device.description() + ": cannot be read: " + why.message());
    isForbidden_ =
        isForbidden_ || why == std::errc::permission_denied || why == std::errc::operation_not_permitted;
}

void DeviceReader::happened(DeviceId id, const InputEvent& event, std::chrono::milliseconds ago) {
    if (!clock_.isPaused()) goTo(now_() - ago);
    rules_.take(id, event);
}

void DeviceReader::dropped() { ++drops_; }

}  // namespace tappora

#include <fcntl.h>
#include <libinput.h>
#include <libudev.h>
#include <linux/input.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <cstdarg>
#include <cstdint>
#include <ctime>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string_view>
#include <utility>

#include "app/common/program.h"
#include "app/recorder/event_source.h"
#include "core/foundation/descriptor.h"
#include "core/foundation/file_io.h"
#include "core/foundation/owned.h"

namespace tappora {
namespace {

using tapcore::Owned;

using UdevDevice = Owned<udev_device, udev_device_unref>;
using Event = Owned<libinput_event, libinput_event_destroy>;

/// How far fingers scroll for one step, in points: what a click of a usual wheel is in degrees.
constexpr double unitsPerStep = 15;

std::uint16_t hexadecimal(const char* text) {
    std::uint16_t value = 0;
    if (text) std::from_chars(text, text + std::string_view(text).size(), value, 16);
    return value;
}

InputDevice describe(libinput_device* device) {
    const UdevDevice node(libinput_device_get_udev_device(device));
    udev_device* parent = node ? udev_device_get_parent(node.get()) : nullptr;
    const char* bus = parent ? udev_device_get_sysattr_value(parent, "id/bustype") : nullptr;
    const std::string_view place = node ? udev_device_get_syspath(node.get()) : "";
    return {.name = libinput_device_get_name(device),
            .node = std::string("/dev/input/") + libinput_device_get_sysname(device),
            .bus = hexadecimal(bus),
            .vendor = static_cast<std::uint16_t>(libinput_device_get_id_vendor(device)),
            .product = static_cast<std::uint16_t>(libinput_device_get_id_product(device)),
            // Not all virtual places: Bluetooth keyboards come through /devices/virtual/misc/uhid.
            .isVirtual = place.find("/devices/virtual/input/") != std::string_view::npos,
            .isKeyboard = libinput_device_keyboard_has_key(device, KEY_A) == 1};
}

/// What can be known of a device that may not be opened.
InputDevice describeUnopened(const std::string& node) {
    const std::string name = std::filesystem::path(node).filename().string();
    const auto file = tapcore::readFile("/sys/class/input/" + name + "/device/name");
    const std::string_view line = std::string_view(file.text).substr(0, file.text.find('\n'));
    return {.name = line.empty() ? "a device" : std::string(line), .node = node};
}

// Devices are known by the id that libinput keeps for us; those left alone have none.
constexpr DeviceId noId = 0;

void setId(libinput_device* device, DeviceId id) {
    libinput_device_set_user_data(device, reinterpret_cast<void*>(std::uintptr_t{id}));
}

DeviceId idOf(libinput_device* device) {
    return static_cast<DeviceId>(reinterpret_cast<std::uintptr_t>(libinput_device_get_user_data(device)));
}

/// Stops a device's events; what libinput cannot stop is left out one by one.
void leaveAlone(libinput_device* device) {
    setId(device, noId);
    libinput_device_config_send_events_set_mode(device, LIBINPUT_CONFIG_SEND_EVENTS_DISABLED);
}

KeyEvent keyEvent(std::uint32_t code, bool isPressed) {
    return {static_cast<std::uint16_t>(code),
            isPressed ? KeyEvent::Action::press : KeyEvent::Action::release};
}

KeyEvent keyEvent(libinput_event_keyboard* event) {
    return keyEvent(libinput_event_keyboard_get_key(event),
                    libinput_event_keyboard_get_key_state(event) == LIBINPUT_KEY_STATE_PRESSED);
}

KeyEvent buttonEvent(libinput_event_pointer* event) {
    return keyEvent(libinput_event_pointer_get_button(event),
                    libinput_event_pointer_get_button_state(event) == LIBINPUT_BUTTON_STATE_PRESSED);
}

MotionEvent motionEvent(libinput_event_pointer* event) {
    return {libinput_event_pointer_get_dx(event), libinput_event_pointer_get_dy(event)};
}

/// Hands on how far a wheel or fingers scrolled along each axis, in `amountOf`'s steps of 120.
void scroll(libinput_event_pointer* event, auto amountOf, const auto& handOn) {
    for (const auto& [axis, ours] :
         {std::pair(LIBINPUT_POINTER_AXIS_SCROLL_VERTICAL, WheelEvent::Axis::vertical),
          std::pair(LIBINPUT_POINTER_AXIS_SCROLL_HORIZONTAL, WheelEvent::Axis::horizontal)})
        if (libinput_event_pointer_has_axis(event, axis)) handOn(WheelEvent{ours, amountOf(event, axis)});
}

double fingerAmount(libinput_event_pointer* event, libinput_pointer_axis axis) {
    return libinput_event_pointer_get_scroll_value(event, axis) / unitsPerStep * WheelEvent::step;
}

/// How long ago a moment of libinput's clock was.
std::chrono::milliseconds since(std::uint64_t microseconds) {
    timespec now{};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    const auto age = std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec) -
                     std::chrono::microseconds(microseconds);
    return std::max(std::chrono::duration_cast<std::chrono::milliseconds>(age), std::chrono::milliseconds(0));
}

/// The modifier keys that are down on an opened device, by the bits that the kernel keeps of its keys.
std::optional<std::vector<LinuxKey>> modifiersDown(int device) {
    std::array<std::uint8_t, KEY_CNT / 8> bits{};
    if (::ioctl(device, EVIOCGKEY(bits.size()), bits.data()) < 0) return std::nullopt;
    std::vector<LinuxKey> down;
    for (LinuxKey key = 0; key < KEY_CNT; ++key)
        if ((bits[key / 8U] >> key % 8U & 1U) != 0 && !modifierOf(key).isEmpty()) down.push_back(key);
    return down;
}

/// Hands on what a device's event says happened, and when on libinput's clock.
using HandOn = std::function<void(const InputEvent& happened, std::uint64_t time)>;

void handOnKey(libinput_event_keyboard* event, const HandOn& handOn) {
    handOn(keyEvent(event), libinput_event_keyboard_get_time_usec(event));
}

void handOnFrom(libinput_event* event, libinput_event_type type, const HandOn& handOn) {
    const auto pointer = [&] { return libinput_event_get_pointer_event(event); };
    const auto atItsTime = [&](const InputEvent& happened) {
        handOn(happened, libinput_event_pointer_get_time_usec(pointer()));
    };
    switch (type) {
        case LIBINPUT_EVENT_KEYBOARD_KEY:
            return handOnKey(libinput_event_get_keyboard_event(event), handOn);
        case LIBINPUT_EVENT_POINTER_BUTTON:
            return atItsTime(buttonEvent(pointer()));
        case LIBINPUT_EVENT_POINTER_MOTION:
            return atItsTime(motionEvent(pointer()));
        case LIBINPUT_EVENT_POINTER_SCROLL_WHEEL:
            return scroll(pointer(), libinput_event_pointer_get_scroll_value_v120, atItsTime);
        case LIBINPUT_EVENT_POINTER_SCROLL_FINGER:
        case LIBINPUT_EVENT_POINTER_SCROLL_CONTINUOUS:
            return scroll(pointer(), fingerAmount, atItsTime);
        default:
            return;  // touches, pens, gestures, and the older form of scrolling
    }
}

class LibinputSource : public EventSource {
  public:
    explicit LibinputSource(const SourceOptions& options);

    int descriptor() const override { return libinput_get_fd(libinput_.get()); }
    void dispatch(EventListener& listener) override;
    std::optional<std::vector<LinuxKey>> heldModifiers(DeviceId id) const override;

  private:
    struct Unreadable {
        std::string node;
        std::error_code why;
    };

    static int open(const char* path, int flags, void* self);
    static void close(int file, void*) { ::close(file); }
    static void noticeDrops(libinput* context, libinput_log_priority, const char* format, va_list);

    void take(libinput_event* event, EventListener& listener);
    void plug(libinput_device* device, EventListener& listener);
    bool isIgnored(const InputDevice& device) const;

    SourceOptions options_;
    std::vector<Unreadable> unreadable_;  ///< not yet told
    DeviceId nextId_ = 1;
    std::map<DeviceId, std::string> nodes_;
    int drops_ = 0;  ///< not yet told
    Owned<udev, udev_unref> udev_;
    Owned<libinput, libinput_unref> libinput_;
};

LibinputSource::LibinputSource(const SourceOptions& options) : options_(options), udev_(udev_new()) {
    static constexpr libinput_interface interface { .open_restricted = open, .close_restricted = close };
    libinput_.reset(udev_ ? libinput_udev_create_context(&interface, this, udev_.get()) : nullptr);
    if (!libinput_) throw Failure("input devices", "libinput cannot be started");
    libinput_log_set_handler(libinput_.get(), noticeDrops);
    libinput_log_set_priority(libinput_.get(), LIBINPUT_LOG_PRIORITY_INFO);
    if (libinput_udev_assign_seat(libinput_.get(), options_.seat.c_str()) < 0)
        throw Failure("input devices", "libinput cannot listen to " + options_.seat);
}

/// Its messages could name keys: none is printed. That the kernel dropped events it says in no other way.
void LibinputSource::noticeDrops(libinput* context, libinput_log_priority, const char* format, va_list) {
    if (std::string_view(format).find("SYN_DROPPED event") == std::string_view::npos) return;
    ++static_cast<LibinputSource*>(libinput_get_user_data(context))->drops_;
}

int LibinputSource::open(const char* path, int flags, void* self) {
    const int file = ::open(path, (flags & ~O_ACCMODE) | O_RDONLY | O_CLOEXEC);
    if (file >= 0) return file;
    const int error = errno;
    static_cast<LibinputSource*>(self)->unreadable_.push_back({path, {error, std::generic_category()}});
    return -error;
}

void LibinputSource::dispatch(EventListener& listener) {
    if (const int error = libinput_dispatch(libinput_.get()); error < 0)
        throw Failure("input devices", std::generic_category().message(-error));
    while (const Event event{libinput_get_event(libinput_.get())}) take(event.get(), listener);
    for (int drops = std::exchange(drops_, 0); drops > 0; --drops) listener.dropped();
    for (const auto& [node, why] : std::exchange(unreadable_, {}))
        if (const InputDevice device = describeUnopened(node); !isIgnored(device))
            listener.unreadable(device, why);
}

bool LibinputSource::isIgnored(const InputDevice& device) const {
    return std::find(options_.ignored.begin(), options_.ignored.end(), device.name) != options_.ignored.end();
}

void LibinputSource::plug(libinput_device* device, EventListener& listener) {
    const InputDevice described = describe(device);
    if (isIgnored(described)) return leaveAlone(device);
    if (options_.tapsClick) libinput_device_config_tap_set_enabled(device, LIBINPUT_CONFIG_TAP_ENABLED);
    setId(device, nextId_);
    nodes_[nextId_] = described.node;
    listener.plugged(nextId_++, described);
}

void LibinputSource::take(libinput_event* event, EventListener& listener) {
    libinput_device* device = libinput_event_get_device(event);
    const libinput_event_type type = libinput_event_get_type(event);
    if (type == LIBINPUT_EVENT_DEVICE_ADDED) return plug(device, listener);
    const DeviceId id = idOf(device);
    if (id == noId) return;
    if (type == LIBINPUT_EVENT_DEVICE_REMOVED) {
        nodes_.erase(id);
        return listener.unplugged(id);
    }
    handOnFrom(event, type, [&](const InputEvent& happened, std::uint64_t time) {
        listener.happened(id, happened, since(time));
    });
}

/// Asks through a file of its own: asking drops the key events that wait to be read from the file asked.
std::optional<std::vector<LinuxKey>> LibinputSource::heldModifiers(DeviceId id) const {
    const auto node = nodes_.find(id);
    if (node == nodes_.end()) return std::nullopt;
    const tapcore::Descriptor device(::open(node->second.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    return device.isOpen() ? modifiersDown(device.get()) : std::nullopt;
}

}  // namespace

std::unique_ptr<EventSource> openInputDevices(const SourceOptions& options) {
    return std::make_unique<LibinputSource>(options);
}

}  // namespace tappora

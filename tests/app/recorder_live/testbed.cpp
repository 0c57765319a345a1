#include "tests/app/recorder_live/testbed.h"

#include <fmt/format.h>
#include <linux/input.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <numeric>
#include <stdexcept>

namespace tappora {
namespace {

std::string hexadecimal(const std::string& bytes) {
    std::string text;
    for (const char byte : bytes) text += fmt::format("{:02X}", static_cast<unsigned char>(byte));
    return text;
}

/// A set of codes as the kernel tells it, in so many bytes.
std::string bits(const std::vector<int>& codes, std::size_t size) {
    std::string bytes(size, '\0');
    for (const int code : codes) {
        char& byte = bytes[static_cast<std::size_t>(code) / 8];
        byte = static_cast<char>(byte | 1 << code % 8);
    }
    return hexadecimal(bytes);
}

std::string text(const char* ioctl, std::string value) {
    const std::size_t size = value.size() + 1;
    value.resize(255);
    return fmt::format("{} {} {}\n", ioctl, size, hexadecimal(value));
}

/// What the kernel answers about a device, in umockdev's form.
std::string answers(const MockDevice& device) {
    std::vector<int> keys(120);
    std::iota(keys.begin(), keys.end(), 1);
    const std::vector<int> buttons = {BTN_LEFT, BTN_RIGHT, BTN_MIDDLE};
    const std::vector<int> axes = {REL_X, REL_Y, REL_WHEEL, REL_WHEEL_HI_RES};
    std::string all = "@DEV " + device.node() + "\nEVIOCGVERSION 0 01000100\n";
    all += "EVIOCGID 0 " + hexadecimal({3, 0, 0x6D, 4, static_cast<char>(device.number), 0, 1, 1}) + "\n";
    all += text("EVIOCGNAME", device.name) + text("EVIOCGPHYS", "usb/input0") + text("EVIOCGUNIQ", "");
    const std::vector<int> types =
        device.isMouse ? std::vector{EV_SYN, EV_KEY, EV_REL} : std::vector{EV_SYN, EV_KEY};
    all += "EVIOCGPROP 8 " + bits({}, 8) + "\nEVIOCGBIT(0) 8 " + bits(types, 8) + "\n";
    all += "EVIOCGBIT(1) 96 " + bits(device.isMouse ? buttons : keys, 96) + "\nEVIOCGKEY 96 " +
           bits(device.held, 96) + "\n";
    all += "EVIOCGBIT(2) 8 " + bits(device.isMouse ? axes : std::vector<int>{}, 8) + "\n";
    for (const int type : {EV_ABS, EV_MSC, EV_SW, EV_LED, EV_SND})
        all += fmt::format("EVIOCGBIT({}) 8 {}\n", type, bits({}, 8));
    return all + "EVIOCGBIT(21) 16 " + bits({}, 16) + "\nEVIOCGLED 8 " + bits({}, 8) + "\nEVIOCGSW 8 " +
           bits({}, 8) + "\n";
}

std::string description(const MockDevice& device) {
    const std::string parent = device.path().substr(4, device.path().rfind('/') - 4);
    const std::string kind = device.isMouse ? "MOUSE" : "KEYBOARD";
    return fmt::format(
        "P: {0}/event{1}\nN: input/event{1}\nE: DEVNAME=/dev/input/event{1}\nE: SUBSYSTEM=input\nE: "
        "MAJOR=13\n"
        "E: MINOR={2}\nE: ID_INPUT=1\nE: ID_INPUT_{3}=1\nA: dev=13:{2}\nL: device=../../input{1}\n\n"
        "P: {0}\nE: SUBSYSTEM=input\nE: ID_INPUT=1\nE: ID_INPUT_{3}=1\nA: name={4}\\n\nA: id/bustype=0003\n",
        parent, device.number, 64 + device.number, kind, device.name);
}

void require(GError* error) {
    if (error) throw std::runtime_error(error->message);
}

}  // namespace

std::string MockDevice::path() const {
    const std::string parent =
        isVirtual ? "virtual" : fmt::format("pci0/usb1/1-{}/0003:046D:{:04X}.0001", number, number);
    return fmt::format("/sys/devices/{}/input/input{}/event{}", parent, number, number);
}

void Testbed::plug(const MockDevice& device) {
    GError* error = nullptr;
    umockdev_testbed_add_from_string(bed_, description(device).c_str(), &error);
    require(error);
    change(device);
    umockdev_testbed_uevent(bed_, device.path().c_str(), "add");
}

void Testbed::change(const MockDevice& device) {
    GError* error = nullptr;
    const auto file =
        std::filesystem::temp_directory_path() / fmt::format("answers-{}-{}", ::getpid(), device.number);
    std::ofstream(file) << answers(device);
    removeBelow("/ioctl" + device.node());
    umockdev_testbed_load_ioctl(bed_, device.node().c_str(), file.c_str(), &error);
    std::filesystem::remove(file);
    require(error);
}

void Testbed::unplug(const MockDevice& device) {
    umockdev_testbed_uevent(bed_, device.path().c_str(), "remove");
    umockdev_testbed_remove_device(bed_, device.path().c_str());
}

void Testbed::removeFile(const MockDevice& device) { removeBelow(device.node()); }

void Testbed::removeBelow(const std::string& path) {
    g_autofree gchar* root = umockdev_testbed_get_root_dir(bed_);
    std::filesystem::remove(root + path);
}

void Testbed::send(const MockDevice& device, const std::vector<Input>& inputs) {
    timespec now{};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    std::vector<input_event> events;
    const auto add = [&](int type, int code, int value) {
        input_event event{};
        event.input_event_sec = now.tv_sec;
        event.input_event_usec = now.tv_nsec / 1000;
        event.type = static_cast<__u16>(type);
        event.code = static_cast<__u16>(code);
        event.value = value;
        events.push_back(event);
    };
    for (const auto& [type, code, value] : inputs) add(type, code, value);
    add(EV_SYN, SYN_REPORT, 0);
    const std::size_t size = events.size() * sizeof(input_event);
    if (::write(umockdev_testbed_get_dev_fd(bed_, device.node().c_str()), events.data(), size) !=
        static_cast<ssize_t>(size))
        throw std::runtime_error("cannot send");
}

void Testbed::tap(const MockDevice& device, int key) {
    send(device, {{EV_KEY, key, 1}});
    send(device, {{EV_KEY, key, 0}});
}

}  // namespace tappora

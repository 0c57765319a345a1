// What the emulated machine needs besides the programs that are tried in it:
//   helper witness PORT       prints to PORT what the kernel says of keys and wheels, and which devices it
//   has opened.
//                             It runs when no other program wants the only processor: what it has seen, all
//                             have seen
//   helper pad FIFO NAME      a keyboard made by a program (uinput); each line of FIFO is the code of a key
//   to strike helper wheel FIFO NAME    a mouse whose wheel turns in eighths of a step (through the kernel's
//   driver for such
//                             mice, by uhid); each line of FIFO is a number of eighths
#include <fcntl.h>
#include <linux/input.h>
#include <linux/uhid.h>
#include <linux/uinput.h>
#include <poll.h>
#include <sched.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace {

[[noreturn]] void fail(const char* what) {
    std::perror(what);
    std::exit(1);
}

int opened(const char* path, int flags) {
    const int file = ::open(path, flags);
    if (file < 0) fail(path);
    return file;
}

void put(int file, const void* data, std::size_t size) {
    if (::write(file, data, size) != static_cast<ssize_t>(size)) fail("write");
}

/// Calls `take` with each line of numbers, for good.
void eachNumber(const char* fifo, const std::function<void(int)>& take) {
    std::FILE* lines = ::fdopen(opened(fifo, O_RDWR), "r");
    for (int number = 0; std::fscanf(lines, "%d", &number) == 1;) take(number);
}

class Witness {
  public:
    explicit Witness(const char* port)
        : port_(opened(port, O_WRONLY)), changes_(::inotify_init1(IN_NONBLOCK)) {
        const sched_param lowest{};
        if (::sched_setscheduler(0, SCHED_IDLE, &lowest) < 0) fail("SCHED_IDLE");
        ::inotify_add_watch(changes_, "/dev/input", IN_CREATE | IN_ATTRIB);
    }

    [[noreturn]] void watch() {
        while (true) {
            openNew();
            std::vector<pollfd> polled{{changes_, POLLIN, 0}};
            for (const auto& [file, device] : devices_) polled.push_back({file, POLLIN, 0});
            ::poll(polled.data(), polled.size(), -1);
            char ignored[4096];
            while (::read(changes_, ignored, sizeof ignored) > 0) {
            }
            for (std::size_t i = 1; i < polled.size(); ++i)
                if (polled[i].revents != 0) take(polled[i].fd);
        }
    }

  private:
    struct Device {
        std::string path, name;
    };

    bool isOpen(const std::string& path) const {
        return std::any_of(devices_.begin(), devices_.end(),
                           [&](const auto& entry) { return entry.second.path == path; });
    }

    void openNew() {
        for (const auto& entry : std::filesystem::directory_iterator("/dev/input")) {
            const std::string path = entry.path();
            if (path.find("/event") == std::string::npos || isOpen(path)) continue;
            const int file = ::open(path.c_str(), O_RDONLY | O_NONBLOCK);
            if (file < 0) continue;
            char name[256] = "?";
            ::ioctl(file, EVIOCGNAME(sizeof name), name);
            devices_[file] = {path, name};
            print(std::string("opened ") + name);
        }
    }

    void take(int file) {
        input_event event{};
        ssize_t got = 0;
        while ((got = ::read(file, &event, sizeof event)) == sizeof event)
            if (event.type == EV_KEY || event.type == EV_REL || event.code == SYN_DROPPED)
                print(std::to_string(event.type) + " " + std::to_string(event.code) + " " +
                      std::to_string(event.value));
        if (got >= 0 || errno == EAGAIN) return;
        print("closed " + devices_[file].name);
        ::close(file);
        devices_.erase(file);
    }

    void print(const std::string& text) const { put(port_, (text + "\n").data(), text.size() + 1); }

    int port_, changes_;
    std::map<int, Device> devices_;
};

void emit(int device, std::uint16_t type, std::uint16_t code, int value) {
    input_event event{};
    event.type = type;
    event.code = code;
    event.value = value;
    put(device, &event, sizeof event);
}

void pad(const char* fifo, const char* name) {
    const int device = opened("/dev/uinput", O_WRONLY);
    ::ioctl(device, UI_SET_EVBIT, EV_KEY);
    for (int key = KEY_ESC; key <= KEY_COMPOSE; ++key) ::ioctl(device, UI_SET_KEYBIT, key);
    uinput_setup setup{};
    setup.id = {BUS_USB, 0x1234, 0x0001, 1};
    std::strncpy(setup.name, name, sizeof setup.name - 1);
    if (::ioctl(device, UI_DEV_SETUP, &setup) < 0 || ::ioctl(device, UI_DEV_CREATE) < 0) fail("uinput");
    eachNumber(fifo, [&](int key) {
        for (const int value : {1, 0}) {
            emit(device, EV_KEY, static_cast<std::uint16_t>(key), value);
            emit(device, EV_SYN, SYN_REPORT, 0);
        }
    });
}

/// A mouse with five buttons, relative X and Y, and a wheel with a multiplier of 8.
constexpr std::uint8_t mouse[] = {
    0x05, 0x01, 0x09, 0x02, 0xA1, 0x01, 0x09, 0x02, 0xA1, 0x02, 0x09, 0x01, 0xA1, 0x00, 0x05, 0x09,
    0x19, 0x01, 0x29, 0x05, 0x15, 0x00, 0x25, 0x01, 0x95, 0x05, 0x75, 0x01, 0x81, 0x02, 0x95, 0x01,
    0x75, 0x03, 0x81, 0x01, 0x05, 0x01, 0x09, 0x30, 0x09, 0x31, 0x15, 0x81, 0x25, 0x7F, 0x75, 0x08,
    0x95, 0x02, 0x81, 0x06, 0xA1, 0x02, 0x09, 0x48, 0x15, 0x00, 0x25, 0x01, 0x35, 0x01, 0x45, 0x08,
    0x75, 0x02, 0x95, 0x01, 0xB1, 0x02, 0x35, 0x00, 0x45, 0x00, 0x75, 0x06, 0xB1, 0x03, 0x09, 0x38,
    0x15, 0x81, 0x25, 0x7F, 0x75, 0x08, 0x95, 0x01, 0x81, 0x06, 0xC0, 0xC0, 0xC0, 0xC0};

void answer(int device, const uhid_event& asked) {
    uhid_event reply{};
    if (asked.type == UHID_SET_REPORT) {
        reply.type = UHID_SET_REPORT_REPLY;
        reply.u.set_report_reply.id = asked.u.set_report.id;
    } else if (asked.type == UHID_GET_REPORT) {
        reply.type = UHID_GET_REPORT_REPLY;
        reply.u.get_report_reply.id = asked.u.get_report.id;
        reply.u.get_report_reply.size = 1;
    } else {
        return;
    }
    put(device, &reply, sizeof reply);
}

void turn(int device, int eighths) {
    uhid_event event{};
    event.type = UHID_INPUT2;
    event.u.input2.size = 4;
    event.u.input2.data[3] = static_cast<std::uint8_t>(eighths);
    put(device, &event, sizeof event);
}

void wheel(const char* fifo, const char* name) {
    const int device = opened("/dev/uhid", O_RDWR);
    uhid_event create{};
    create.type = UHID_CREATE2;
    std::strncpy(reinterpret_cast<char*>(create.u.create2.name), name, sizeof create.u.create2.name - 1);
    create.u.create2.rd_size = sizeof mouse;
    create.u.create2.bus = BUS_USB;
    create.u.create2.vendor = 0x1234;
    create.u.create2.product = 0x0002;
    std::memcpy(create.u.create2.rd_data, mouse, sizeof mouse);
    put(device, &create, sizeof create);
    std::FILE* lines = ::fdopen(opened(fifo, O_RDWR), "r");
    std::setvbuf(lines, nullptr, _IONBF, 0);
    for (pollfd polled[] = {{device, POLLIN, 0}, {::fileno(lines), POLLIN, 0}}; ::poll(polled, 2, -1) > 0;) {
        uhid_event asked{};
        if (polled[0].revents != 0 && ::read(device, &asked, sizeof asked) > 0) answer(device, asked);
        int eighths = 0;
        if (polled[1].revents != 0 && std::fscanf(lines, "%d%*1[\n]", &eighths) == 1) turn(device, eighths);
    }
}

}  // namespace

int main(int count, char** words) {
    const std::string task = count > 2 ? words[1] : "";
    if (task == "witness") Witness(words[2]).watch();
    if (task == "pad" && count == 4) pad(words[2], words[3]);
    if (task == "wheel" && count == 4) wheel(words[2], words[3]);
    std::fputs("helper: what is asked for is not known\n", stderr);
    return 2;
}

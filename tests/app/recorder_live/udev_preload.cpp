// Preloaded beside umockdev's own library, for what that one leaves out and libinput asks for: that udev has
// seen the device, and that an opened device file is the device of its name. (umockdev's device files are
// pseudo-terminals.)

#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <cstdlib>
#include <string>

struct udev_device;

namespace {

constexpr unsigned ptySlave = 136;

/// The device whose file an open pseudo-terminal is: `number` of the device, or that of the terminal.
dev_t deviceOf(dev_t terminal) {
    const std::string folder = std::string(std::getenv("UMOCKDEV_DIR")) + "/dev/input/event";
    for (int event = 0; event < 16; ++event) {
        struct stat64 behind {
        }, device{};
        const std::string number = std::to_string(event);
        if (::stat64((folder + number).c_str(), &behind) == 0 && behind.st_rdev == terminal &&
            ::stat64(("/dev/input/event" + number).c_str(), &device) == 0)
            return device.st_rdev;
    }
    return terminal;
}

}  // namespace

extern "C" int udev_device_get_is_initialized(udev_device*) { return 1; }

extern "C" int fstat64(int file, struct stat64* status) noexcept {
    const int result = ::fstatat64(file, "", status, 0x1000 /* AT_EMPTY_PATH */);
    if (result == 0 && S_ISCHR(status->st_mode) && major(status->st_rdev) == ptySlave)
        status->st_rdev = deviceOf(status->st_rdev);
    return result;
}

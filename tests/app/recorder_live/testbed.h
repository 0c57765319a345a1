#pragma once

#include <umockdev.h>

#include <memory>
#include <string>
#include <vector>

namespace tappora {

/// A device of the test bed.
struct MockDevice {
    int number = 0;  ///< of its file, /dev/input/eventN
    std::string name;
    bool isMouse = false;
    bool isVirtual = false;
    std::vector<int> held{};  ///< keys that are down, as it says when it is asked

    std::string node() const { return "/dev/input/event" + std::to_string(number); }
    std::string path() const;
};

/// Input devices that the programs started by this process see in place of the machine's own.
class Testbed {
  public:
    Testbed() : bed_(umockdev_testbed_new()) {}
    ~Testbed() { g_object_unref(bed_); }
    Testbed(const Testbed&) = delete;
    Testbed& operator=(const Testbed&) = delete;

    /// Adds a device, and tells programs that run.
    void plug(const MockDevice& device);
    void unplug(const MockDevice& device);
    /// Lets a plugged device answer otherwise from now on.
    void change(const MockDevice& device);
    /// Takes the device's file away: it is there and cannot be opened.
    void removeFile(const MockDevice& device);

    struct Input {
        int type, code, value;
    };
    /// A frame of events.
    void send(const MockDevice& device, const std::vector<Input>& inputs);
    /// A key goes down and up.
    void tap(const MockDevice& device, int key);

  private:
    void removeBelow(const std::string& path);

    UMockdevTestbed* bed_;
};

}  // namespace tappora

#include "app/recorder/recording_file.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <utility>

#include "app/common/program.h"
#include "core/foundation/file_io.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;

const std::string evemuHead = "# EVEMU 1.3\nN: A keyboard\nI: 0003 05ac 024f 0111\n";
const std::string yamlHead =
    "version: 1\ndevices:\n- node: /dev/input/event4\n  evdev:\n    name: \"A keyboard\"\n    id: [6, 1, 2, "
    "3]\n"
    "  events:\n";

class RecordingFile : public testing::Test {
  protected:
    fs::path path = fs::path(testing::TempDir()) / ("recording-" + std::to_string(::getpid()));
    ~RecordingFile() override { fs::remove(path); }

    std::string failureOf(const std::string& text) {
        std::ofstream(path) << text;
        try {
            readRecording(path);
            return "";
        } catch (const Failure& failure) {
            return std::string(failure.what()).substr(path.string().size());
        }
    }
};

TEST_F(RecordingFile, NamesTheLineThatIsDamaged) {
    const std::string cases[][2] = {
        {evemuHead + "E: 0.000001 0001 001e\n", ":4: damaged event line"},
        {evemuHead + "E: 0.000001 0001 001e 1\nE: 0.1\n", ":5: damaged event line"},
        {evemuHead + "E: 0.000001 0001 00zz 0001\n", ":4: damaged event line"},
        {evemuHead + "E: 0.000001 0001 001e 0001 7\n", ":4: damaged event line"},
        {evemuHead + "E: 0.00001 0001 001e 0001\n", ":4: damaged event line"},
        {evemuHead + "E: 999999999999.000001 0001 001e 0001\n", ":4: damaged event line"},
        {evemuHead + "E: 0.000001 0001 001e 99999999999\n", ":4: damaged event line"},
        {evemuHead + "lsE: 0.000001 0001\n", ":4: damaged event line"},
        {evemuHead + "E:", ":4: damaged event line"},
        {yamlHead + "  - evdev:\n    - [0, 0, 1, 30\n", ":9: damaged event line"},
        {yamlHead + "  - evdev:\n    - [0, 0, 1, 30, 1, 4]\n", ":9: damaged event line"},
        {yamlHead + "  - evdev:\n    - [0, 1000000, 1, 30, 1]\n", ":9: damaged event line"},
        {yamlHead + "  - evdev:\n    - [0, 0, 70000, 30, 1]\n", ":9: damaged event line"},
        {yamlHead + "  - evdev:\n    - [", ":9: damaged event line"},
        {yamlHead + "  - evdev: [[0, 0, 1, 30, 1], [0, 0\n", ":8: damaged event line"},
        {"version: 1\ndevices:\n- node: x\n evdev: y\n", ":4: end of sequence not found"},
        {"version: 1\ndevices:\n- evdev: {id: [1, x, 3]}\n  events:\n  - evdev:\n    - [0, 0, 1, 30, 1]\n",
         ":3: bad conversion"},
        {"version: 1\nevents:\n- evdev:\n  - [0, 0, 1, 30, 1]\n", ":2: events without a device"},
        {evemuHead, ": no countable events"},
        {"# libinput record\n,\n", ":2: not a list of devices"},
        {"Dear Ada,\n", ": not a recording of evemu-record or libinput record"},
        {"# A mouse\nD: 0\nN: device 0:0\nI: 3 046d c31c\nE: 000000.000000 8 00 00 04\n",
         ": not a recording"},
        {"R: 3 05 01 09\nN: A mouse\nE: 0.000010 1 01\n", ": not a recording"},
        {"P: /devices/pci0\nN: input/event5\nE: DEVNAME=/dev/input/event5\n", ": not a recording"},
        {"", ": not a recording of evemu-record or libinput record"},
    };
    for (const auto& [text, message] : cases)
        EXPECT_EQ(failureOf(text).substr(0, message.size()), message) << text;
    fs::remove(path);
    EXPECT_THROW(readRecording(path), Failure);
    EXPECT_THROW(readRecording(testing::TempDir()), Failure);
}

TEST_F(RecordingFile, IsNotReadWithoutEnd) {
    const std::string why = "/dev/zero: larger than 256 MB, too large for a recording; replay it in parts";
    EXPECT_THAT([] { readRecording("/dev/zero"); }, testing::ThrowsMessage<Failure>(why));
}

TEST(Recording, TakesTheKeyboardsOfVirtualMachinesForReal) {
    for (const auto& [name, isVirtual] :
         {std::pair("QEMU Virtio Keyboard", false), std::pair("Microsoft Vmbus HID-compliant Mouse", false),
          std::pair("ydotoold virtual device", true)}) {
        const std::string head = "N: " + std::string(name) + "\nI: 0006 0627 0001 0001\n";
        EXPECT_EQ(readEvemu(head).devices.at(0).isVirtual, isVirtual) << name;
    }
}

TEST(Recording, BearsWhatATerminalPrintsAmongTheEvents) {
    const Recording expected{
        .devices = {{.name = "A keyboard", .bus = 3, .vendor = 0x05AC, .product = 0x024F}},
        .events = {{.time = 1, .type = 1, .code = 30, .value = 1},
                   {.time = 2'000'003, .type = 2, .code = 0, .value = -4}}};
    EXPECT_EQ(
        readEvemu(evemuHead + "^C\nE\n\nhellE: 0.000001 0001 001e 0001\t# EV_KEY / KEY_A   1\r\n$ echo E: 5\n"
                              "[1]+ Stopped\nE: 2.000003 0002 0000 -004"),
        expected);
    const Recording yaml = readLibinputRecord(
        yamlHead +
        "  # Current time is 10:00:00\n^C\n  - evdev:\nhell    - [  0,      1,   1,  30,       1] # x\n"
        "user@host:~$ [1]+ - [12:30] stopped\n- what: ever\n  - hid:\n      time: [ 0, 0]\n      hidraw0: [ "
        "0x1, 2 "
        "]\n"
        "    - [  2,      3,   2,   0,      -4] # EV_REL / REL_X (obfuscated)\n\n$ ");
    EXPECT_EQ(yaml.events, expected.events);
    EXPECT_TRUE(yaml.devices.at(0).isVirtual);
    EXPECT_EQ(yaml.devices.at(0).node, "/dev/input/event4");
    EXPECT_FALSE(yaml.keysAreMasked);
}

TEST(Recording, MergesDevicesByTimeAndKnowsMaskedKeys) {
    const Recording recording = readRecording(fs::path(TEST_DATA) / "recordings/masked.yml");
    EXPECT_TRUE(recording.keysAreMasked);
    ASSERT_EQ(recording.devices.size(), 2U);
    EXPECT_EQ(recording.devices[1].name, "Test Mouse");
    EXPECT_EQ(recording.events.size(), 34U);
    std::string order;
    for (const RecordedEvent& event : recording.events)
        if (order.empty() || order.back() != static_cast<char>('0' + event.device))
            order += static_cast<char>('0' + event.device);
    EXPECT_EQ(order, "0101010") << "the times of this file wrapped around, as they do before the first event";
}

}  // namespace
}  // namespace tappora

#include "app/recorder/input_device.h"

#include <linux/input.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace tappora {
namespace {

constexpr std::array<std::string_view, 5> remappers = {"keyd", "kanata", "kmonad", "interception", "xremap"};

/// In the names of what virtual machines give their guests (virtio, Hyper-V).
constexpr std::array<std::string_view, 2> machines = {"virtio", "vmbus"};

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool contains(std::string_view text, std::string_view part) {
    const auto same = [](char a, char b) { return lower(a) == lower(b); };
    return !part.empty() &&
           std::search(text.begin(), text.end(), part.begin(), part.end(), same) != text.end();
}

}  // namespace

std::string InputDevice::description() const { return node.empty() ? name : name + " (" + node + ")"; }

bool isRemapper(const InputDevice& device, const std::vector<std::string>& names) {
    const auto isNamed = [&](std::string_view part) { return contains(device.name, part); };
    return device.isVirtual && (std::any_of(remappers.begin(), remappers.end(), isNamed) ||
                                std::any_of(names.begin(), names.end(), isNamed));
}

bool isVirtualInRecording(const InputDevice& device) {
    const auto isNamed = [&](std::string_view part) { return contains(device.name, part); };
    return device.bus == BUS_VIRTUAL && std::none_of(machines.begin(), machines.end(), isNamed);
}

}  // namespace tappora

#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tapcore {

/// What a layout prints on its keys: for a key code its legends, unshifted first, then shifted.
using Legends = std::map<std::uint16_t, std::vector<std::string>>;

}  // namespace tapcore

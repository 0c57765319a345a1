#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "core/counting/legends.h"
#include "core/counting/tally.h"

namespace tapcore {

/// One line of a list of top keys.
struct KeyRow {
    KeyCode keyCode = 0;
    std::string name;
    std::int64_t count = 0;
};

/// The most used keys, at most `limit`, by count descending and then by key code; counts below 1 are left
/// out.
std::vector<KeyRow> topKeys(const Tally::KeyCounts& counts, const Legends& legends, std::size_t limit);

}  // namespace tapcore

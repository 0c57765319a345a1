#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "core/counting/legends.h"
#include "core/counting/tally.h"

namespace tappora {

/// A key among the most used ones.
struct KeyRow {
    tapcore::KeyCode keyCode = 0;
    std::string name;
    std::int64_t count = 0;
};

/// The most used keys, at most `limit`, by count descending and then by key code.
std::vector<KeyRow> topKeys(const tapcore::Tally::KeyCounts& counts, const tapcore::Legends& legends,
                            std::size_t limit);

}  // namespace tappora

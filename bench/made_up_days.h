#pragma once

#include <cstdint>

#include "core/files/day_file.h"

namespace tappora::bench {

/// A day of 17 kB: 40 keys in each of 13 hours, and some shortcuts.
inline tapcore::DayFile busyDay() {
    tapcore::DayFile file;
    for (std::int64_t hour = 8; hour < 21; ++hour) {
        for (tapcore::KeyCode key = 0; key < 40; ++key) file.tally.add(key, hour, 10 + key * hour);
        for (tapcore::KeyCode key = 0; key < 4; ++key)
            file.tally.add({tapcore::Modifiers::command, key}, hour, 3);
    }
    return file;
}

}  // namespace tappora::bench

#pragma once

#include <cstddef>
#include <functional>

namespace tapcore {

/// Told how far long work has come, before each step of it; false interrupts it there. May be empty.
using Progress = std::function<bool(std::size_t done, std::size_t total)>;

/// Whether the work goes on: what `progress` says, or always when it is empty.
inline bool shouldContinue(const Progress& progress, std::size_t done, std::size_t total) {
    return !progress || progress(done, total);
}

}  // namespace tapcore

#pragma once

#include <cerrno>

namespace tapcore {

/// The result of a system call, made again for as long as a signal interrupts it.
int retrying(auto call) {
    int result = 0;
    do result = static_cast<int>(call());
    while (result < 0 && errno == EINTR);
    return result;
}

}  // namespace tapcore

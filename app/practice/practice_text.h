#pragma once

#include <cstdint>
#include <string>

namespace tappora {

// How figures of practice are written, on the screen and in print.

/// "3:12" of seconds.
std::string minutes(std::int64_t seconds);
/// "97 %", rounded down, so that 100 % means all.
std::string percent(double share);

}  // namespace tappora

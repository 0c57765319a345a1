#include "app/practice/practice_text.h"

#include <fmt/format.h>

#include <cmath>

namespace tappora {
std::string minutes(std::int64_t seconds) { return fmt::format("{}:{:02}", seconds / 60, seconds % 60); }

std::string percent(double share) {
    // What is a whole number of hundredths may be slightly below it: 0.95 * 100.
    return fmt::format("{} %", std::floor(share * 100 + 1e-9));
}

}  // namespace tappora

#pragma once

#include <cstddef>
#include <string_view>

/// Counts near the end of 64 bits end the program on purpose; longer numbers are no counts.
inline bool mayOverflow(std::string_view text) {
    std::size_t digits = 0;
    for (const char c : text)
        if ((digits = c >= '0' && c <= '9' ? digits + 1 : 0) > 15) return true;
    return false;
}

#include "app/practice/practice_text.h"

#include <fmt/format.h>

#include <array>
#include <cmath>
#include <string_view>
#include <utility>

namespace tappora {
namespace {

constexpr std::array<std::pair<std::string_view, std::string_view>, 6> names = {{
    {"de", "German"},
    {"en", "English"},
    {"es", "Spanish"},
    {"fr", "French"},
    {"ru", "Russian"},
    {"uk", "Ukrainian"},
}};

}  // namespace

std::string minutes(std::int64_t seconds) { return fmt::format("{}:{:02}", seconds / 60, seconds % 60); }

std::string percent(double share) {
    // What is a whole number of hundredths may be slightly below it: 0.95 * 100.
    return fmt::format("{} %", std::floor(share * 100 + 1e-9));
}

std::string languageName(const std::string& code) {
    for (const auto& [known, name] : names)
        if (known == code) return std::string(name);
    return code;
}

}  // namespace tappora

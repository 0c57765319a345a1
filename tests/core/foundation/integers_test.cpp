#include "core/foundation/integers.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

namespace tapcore {
namespace {

TEST(Integers, AreASignAndAsciiDigitsInRange) {
    const struct {
        std::string_view text;
        std::optional<std::int64_t> value;
    } cases[] = {{"0", 0},
                 {"+5", 5},
                 {"-0", 0},
                 {"007", 7},
                 {"9223372036854775807", INT64_MAX},
                 {"-9223372036854775808", INT64_MIN},
                 {"9223372036854775808", {}},
                 {"", {}},
                 {"+", {}},
                 {"-", {}},
                 {"+-5", {}},
                 {" 5", {}},
                 {"5 ", {}},
                 {"5.0", {}},
                 {"0x5", {}},
                 {"٣", {}}};
    for (const auto& [text, value] : cases) EXPECT_EQ(parseInteger(text), value) << text;
    EXPECT_EQ(parseKeyCode("65535"), 65535);
    EXPECT_EQ(parseKeyCode("-0"), 0);
    EXPECT_EQ(parseKeyCode("65536"), std::nullopt);
    EXPECT_EQ(parseKeyCode("-1"), std::nullopt);
}

TEST(Integers, AreGroupedByThousands) {
    const std::pair<std::int64_t, const char*> cases[] = {{999, "999"},
                                                          {1000, "1,000"},
                                                          {-999, "-999"},
                                                          {1234567, "1,234,567"},
                                                          {INT64_MIN, "-9,223,372,036,854,775,808"}};
    for (const auto& [number, text] : cases) EXPECT_EQ(grouped(number), text);
}

}  // namespace
}  // namespace tapcore

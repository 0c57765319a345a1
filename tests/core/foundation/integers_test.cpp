#include "core/foundation/integers.h"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace tapcore

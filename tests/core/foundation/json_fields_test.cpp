#include "core/foundation/json_fields.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace tapcore {
namespace {

std::string failureOf(std::string_view text, auto read) {
    try {
        const nlohmann::json document = JsonValue::parse(text);
        read(JsonValue(document));
    } catch (const JsonError& error) {
        return error.what();
    }
    return "";
}

TEST(JsonValue, TakesIntegersByValueAndNothingElseForThem) {
    const auto read = [](std::string_view text) {
        const nlohmann::json document = JsonValue::parse(text);
        return JsonValue(document).integer();
    };
    EXPECT_EQ(read("1.0"), 1);
    EXPECT_EQ(read("-9223372036854775808"), INT64_MIN);
    const auto integer = [](const JsonValue& value) { (void)value.integer(); };
    EXPECT_EQ(failureOf("1.5", integer), "the document: not a 64-bit integer: 1.5");
    EXPECT_EQ(failureOf("9223372036854775808", integer),
              "the document: not a 64-bit integer: 9223372036854775808");
    EXPECT_NE(failureOf("-9223372036854775809", integer), "");
    EXPECT_NE(failureOf("1e300", integer), "");
    EXPECT_EQ(failureOf("true", integer), "the document: not an integer: true");
    EXPECT_NE(failureOf("1e400", integer), "");
}

TEST(JsonValue, FailuresSayThePlace) {
    const std::string_view text = R"({"keys": [{"w": 1}, {"w": "wide"}], "none": null})";
    const auto width = [](std::size_t index) {
        return [index](const JsonValue& value) {
            (void)value.member("keys").element(index).member("w").number();
        };
    };
    EXPECT_EQ(failureOf(text, width(0)), "");
    EXPECT_EQ(failureOf(text, width(1)), "keys[1].w: not a number: \"wide\"");
    EXPECT_EQ(failureOf(text, width(2)), "keys: has too few elements");
    EXPECT_EQ(failureOf(text, [](const JsonValue& value) { (void)value.member("none"); }),
              "the document: \"none\" is missing");
    const std::string_view afterNul("{}\n\0}}}", 7);
    EXPECT_EQ(failureOf(afterNul, width(0)), "a NUL at line 2, column 1");
    EXPECT_EQ(
        failureOf(R"({"\u0000k": {}})",
                  [](const JsonValue& value) { (void)value.member(std::string_view("\0k", 2)).number(); }),
        "\u2400k: not a number: {}");
    EXPECT_EQ(failureOf("{\"a\": 1,}", width(0)).substr(0, 34), "parse error at line 1, column 9: s");
    EXPECT_EQ(failureOf("{\"ä\": 1,}", width(0)).substr(0, 34), "parse error at line 1, column 9: s")
        << "characters, not bytes";
}

}  // namespace
}  // namespace tapcore

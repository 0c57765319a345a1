#include "core/foundation/json_once.h"

#include <gtest/gtest.h>

#include "core/foundation/json_fields.h"
#include "tests/support/message_of.h"

namespace tapcore {
namespace {

TEST(JsonOnce, NamesAMemberThatIsThereTwice) {
    const std::pair<const char*, const char*> cases[] = {
        {R"({"a": 1, "b": {"a": 1}, "c": [{"a": 1}, {"a": 1}]})", ""},
        {R"({"a": 1, "b": 2, "a": 1})", "a: set twice"},
        {R"({"a": {"b": 1, "b": 2}})", "b: set twice"},
        {R"([{"x": 1, "x": null}])", "x: set twice"},
        {R"({"a": 1, "\u0061": 2})", "a: set twice"},
        {"7", ""},
    };
    for (const auto& [text, why] : cases)
        EXPECT_EQ(messageOf<JsonError>([&] { return requireEachOnce(text), 0; }), why) << text;
    EXPECT_THROW(requireEachOnce("{"), JsonError);
    EXPECT_THROW(requireEachOnce(std::string(600, '[') + std::string(600, ']')), JsonError);
}

}  // namespace
}  // namespace tapcore

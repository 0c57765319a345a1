#include "core/keyboard/import/text/lenient_json.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "core/foundation/json_fields.h"
#include "tests/support/message_of.h"

namespace tapcore {
namespace {

std::string whyRefused(std::string_view text) {
    return messageOf<JsonError>([&] { parseLenientJson(text); });
}

TEST(LenientJson, ReadsWhatPeopleAndEditorsWrite) {
    const struct {
        std::string_view text, strict;
    } cases[] = {
        {R"({"a": [1, -2.5e1, true, null, "x"]})", R"({"a":[1,-25.0,true,null,"x"]})"},
        {"{x:.5,y:-.25,z:+1,$_1:2.}", R"({"$_1":2.0,"x":0.5,"y":-0.25,"z":1})"},
        {"[[1,],{a:1,},]", R"([[1],{"a":1}])"},
        {R"(['it\'s', "a\tb\"\/\\"])", R"(["it's","a\tb\"/\\"])"},
        {R"("\u00e9\uD83C\uDF10\uD83Cx")", R"("é🌐�x")"},
        {"// first\n[1] /* [2] */ , [3]", "[[1],[3]]"},
        {"[\"Q\"],\n[\"W\"],", R"([["Q"],["W"]])"},
        {"\"\xFF\"", R"("�")"},
    };
    for (const auto& [text, strict] : cases) EXPECT_EQ(parseLenientJson(text).dump(), strict) << text;
}

TEST(LenientJson, SaysWhereItCannotGoOn) {
    const struct {
        std::string text, why;
    } cases[] = {
        {" \n", "line 2, column 1: nothing but white space"},
        {"[1\n 2]", "line 2, column 2: expected , or ] but found \"2\""},
        {"{a 1}", "line 1, column 4: expected : but found \"1\""},
        {"{a:1 b:2}", "line 1, column 6: expected , or } but found \"b\""},
        {"{1:2}", "line 1, column 2: expected a member's name but found \"1\""},
        {"[NaN]", "line 1, column 2: NaN is no value"},
        {"[1e400]", "line 1, column 2: not a number, or too large a one"},
        {"[1-2]", "line 1, column 2: not a number, or too large a one"},
        {"[ü]", "line 1, column 2: expected a value but found \"ü\""},
        {"[\"a\nb\"]", "line 1, column 2: the string does not end"},
        {"[\"\\x\"]", "line 1, column 4: unknown escape"},
        {"[\"\\u12\"]", "line 1, column 4: four hexadecimal digits must follow \\u"},
        {"[1] 2", "line 1, column 5: unexpected \"2\""},
        {"[ /* 1", "line 1, column 3: the comment does not end"},
        {"[", "line 1, column 2: expected a value but found the end"},
        {std::string(1'000'000, '['), "line 1, column 65: nested more than 64 deep"},
    };
    for (const auto& [text, why] : cases) EXPECT_EQ(whyRefused(text), why) << text.substr(0, 40);
}

}  // namespace
}  // namespace tapcore

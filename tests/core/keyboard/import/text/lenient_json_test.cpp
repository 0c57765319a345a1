#include "core/keyboard/import/text/lenient_json.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace tapcore {
namespace {

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

}  // namespace
}  // namespace tapcore

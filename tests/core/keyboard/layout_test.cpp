#include "core/keyboard/layout.h"

#include <gtest/gtest.h>

#include "core/foundation/json_fields.h"

namespace tapcore {
namespace {

std::string withLegends(std::string_view legends) {
    return R"({"id": "l", "name": "L", "base": null, "legends": )" + std::string(legends) + "}";
}

std::string whyRefused(std::string_view text) {
    try {
        Layout::parse(text);
    } catch (const JsonError& error) {
        return error.what();
    }
    return "";
}

TEST(Layout, ReadsKeyCodesInAnySpellingAndWritesThemInDecimal) {
    const Layout layout = Layout::parse(withLegends(R"({"07": ["x", "X"], "+48": ["tab"], "65535": []})"));
    EXPECT_EQ(layout,
              (Layout{.id = "l", .name = "L", .legends = {{7, {"x", "X"}}, {48, {"tab"}}, {65535, {}}}}));
    EXPECT_EQ(layout.text(),
              R"({
  "id": "l",
  "legends": {
    "48": ["tab"],
    "65535": [],
    "7": ["x","X"]
  },
  "name": "L"
}
)");
    EXPECT_EQ(Layout::parse(layout.text()), layout);
}

TEST(Layout, NamesThePlaceOfWhatItCannotDecode) {
    const struct {
        std::string legends, why;
    } cases[] = {
        {R"({"x1": ["a"]})", "x1 is not a key code"},
        {R"({"65536": ["a"]})", "65536 is not a key code"},
        {R"({"": ["a"]})", " is not a key code"},
        {R"({"7": null})", "legends.7: not an array"},
        {R"({"7": ["a", null]})", "legends.7[1]: not a string"},
        {R"([])", "legends: not an object"},
        {R"(null)", "the document: \"legends\" is missing"},
    };
    for (const auto& [legends, why] : cases) EXPECT_EQ(whyRefused(withLegends(legends)), why);
}

TEST(LayoutDeathTest, EndsAtTwoSpellingsOfOneKeyCode) {
    EXPECT_DEATH(Layout::parse(withLegends(R"({"7": ["x"], "07": ["y"]})")), "Duplicate values for key: '7'");
}

}  // namespace
}  // namespace tapcore

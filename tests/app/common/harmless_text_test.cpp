#include "app/common/harmless_text.h"

#include <gtest/gtest.h>

namespace tappora {
namespace {

TEST(HarmlessText, HasNothingThatSteersATerminal) {
    const struct {
        std::string_view text, harmless, onOneLine;
    } cases[] = {
        {"plain: é 日 🇩🇪", "plain: é 日 🇩🇪", "plain: é 日 🇩🇪"},
        {"\033[2Jgone", "[2Jgone", "[2Jgone"},
        {"a\x07\x7F"
         "b",
         "ab", "ab"},
        {"two\nlines\tand\r\nmore\rover", "two\nlines\tand\nmoreover", "two lines and moreover"},
        {"C1: \u009B31m", "C1: 31m", "C1: 31m"},
        {"\u202Aa\u202Eb\u2066c\u2069d", "abcd", "abcd"},
        {"\u2029\u202F\u2065\u206A", "\u2029\u202F\u2065\u206A", " \u202F\u2065\u206A"},
        {"\u2028", "\u2028", " "},
        {"\xFFx\xC3", "\uFFFDx\uFFFD", "\uFFFDx\uFFFD"},
        {std::string_view("a\0b", 3), "ab", "ab"},
        {"", "", ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(harmless(c.text), c.harmless) << &c - cases;
        EXPECT_EQ(harmlessLine(c.text), c.onOneLine) << &c - cases;
    }
}

TEST(HarmlessText, MeansTheSameInJson) {
    EXPECT_EQ(harmlessJson("{\n\"a\": \"\u202Eb\u009B\x7F é\u2028\"}"),
              "{\n\"a\": \"\\u202eb\\u009b\\u007f é\u2028\"}");
    EXPECT_EQ(harmlessJson("\t"), "\\u0009");
}

}  // namespace
}  // namespace tappora

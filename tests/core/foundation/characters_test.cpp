#include "core/foundation/characters.h"

#include <gmock/gmock.h>

#include "core/foundation/utf8.h"

namespace tapcore {
namespace {

TEST(Characters, AreWhatAReaderTakesForOne) {
    const struct {
        std::string_view text;
        std::size_t count;
    } cases[] = {{"", 0},     {"abc", 3},    {"⌘S", 2},  {"e\u0301", 1}, {"👩‍👩‍👧", 1},
                 {"🇩🇪🇫🇷", 2}, {"a\r\nb", 3}, {"\xFF", 1}};
    for (const auto& [text, count] : cases) EXPECT_EQ(characterCount(text), count) << text;
    EXPECT_THAT(characters("ae\u0301ß"), testing::ElementsAre("a", "e\u0301", "ß"));
    EXPECT_EQ(firstCharacters("e\u0301e\u0301e\u0301", 2), "e\u0301e\u0301");
    EXPECT_EQ(firstCharacters("ab", 0), "");
}

TEST(Characters, CaseIsFullAndWithoutALocale) {
    EXPECT_EQ(uppercased("straße"), "STRASSE");
    EXPECT_EQ(uppercased("ŉi"), "ʼNI");
    EXPECT_EQ(lowercased("ÄİΣ"), "äi̇ς");
    EXPECT_TRUE(isLetter("é") && isLetter("я") && !isLetter("1") && !isLetter("") && !isLetter("_"));
    EXPECT_TRUE(isNumber("7") && isNumber("½") && isNumber("四") && !isNumber("a"));
}

TEST(Characters, WhiteSpaceIsUnicodes) {
    EXPECT_EQ(trimmedWhiteSpace("\u3000\t Studio \u00A0\n"), "Studio");
    EXPECT_EQ(trimmedWhiteSpace(" \u2003 "), "");
}

TEST(Characters, BytesThatAreNotUtf8AreFoundAndReplaced) {
    const std::string long_ascii(21, 'a');
    EXPECT_EQ(firstInvalidUtf8(long_ascii + "é"), std::string_view::npos);
    EXPECT_EQ(firstInvalidUtf8(long_ascii + "\xE9x"), 21U);
    EXPECT_EQ(repairedUtf8("caf\xE9 | 3\n\xF0\x9F"), "caf\uFFFD | 3\n\uFFFD");
}

}  // namespace
}  // namespace tapcore

#include "core/files/text_table.h"

#include <gmock/gmock.h>

#include <array>
#include <cstdint>

#include "core/files/table_reader.h"

namespace tapcore {
namespace {

using testing::ElementsAre;
using Row = std::vector<std::string>;

const TextTable shortcuts{
    {"key", "count"}, {false, true}, {{"⌘S", "12"}, {"tab|new\nline\u2028", "12345", "beyond the header"}}};

TEST(TextTable, RendersAlignedColumnsInBothFormats) {
    EXPECT_EQ(shortcuts.section(FileFormat::markdown, "Shortcuts"),
              "## Shortcuts\n"
              "\n"
              "| key           | count |\n"
              "| ------------- | ----: |\n"
              "| ⌘S            |    12 |\n"
              "| tab new line  | 12345 |\n");
    EXPECT_EQ(shortcuts.section(FileFormat::org, "Shortcuts"),
              "* Shortcuts\n"
              "\n"
              "| key           | count |\n"
              "|---------------+-------|\n"
              "| ⌘S            |    12 |\n"
              "| tab new line  | 12345 |\n");
    EXPECT_EQ((TextTable{{"k", "n"}, {false, true}, {}}).render(FileFormat::markdown),
              "| k   |   n |\n| --- | --: |\n");
}

TEST(TextTableDeathTest, ATableThatCannotBeWrittenIsAFaultOfTheCode) {
    EXPECT_DEATH((void)TextTable{}.render(FileFormat::org), "a table without columns cannot be written");
    EXPECT_DEATH((void)(TextTable{{"a", "b"}, {true, true}, {{"1"}}}).render(FileFormat::org), "fewer cells");
}

TEST(TextTable, ReadsBothFormatsAndTheOlderLayoutAlike) {
    const auto expected = ElementsAre(
        TextTable::Section{"shortcuts", {{"key", "count"}, {"⌘S", "12"}, {"tab new line", "12345"}}});
    for (const FileFormat format : FileFormat::allCases)
        EXPECT_THAT(
            TextTable::sections(format.titleLine("2026-09-20") + shortcuts.section(format, "Shortcuts")),
            expected);
    EXPECT_THAT(TextTable::sections("# Shortcuts\nkey\tcount\n⌘S\t12\ntab new line\t12345"), expected);
}

/// The rows of one section, whatever else a line is.
std::vector<Row> rowsOf(std::string_view lines) {
    const auto sections = TextTable::sections("* Keys\n" + std::string(lines));
    return sections.empty() ? std::vector<Row>{} : sections.back().rows;
}

TEST(TextTable, TakesRowsAsPeopleWriteThem) {
    const struct {
        std::string_view line;
        std::vector<Row> rows;
    } cases[] = {
        {"|1|2|", {{"1", "2"}}},
        {" \t| 1 |  | 3 | \t", {{"1", "", "3"}}},
        {"||", {{""}}},
        {"|", {}},
        {"| 1 | 2", {}},
        {"1 2", {}},
        {"1\t\t 3", {{"1", "", " 3"}}},
        {"| - | - |", {}},
        {"| - | 3 |", {{"-", "3"}}},
        {"|---+---|", {}},
        {"| :-: | --: |", {}},
        {"| --- |  |", {{"---", ""}}},
        {"| a |\r\n| b |\r| c |\v| d |\f| e |\u0085| f |\u2028| g |\u2029| h |",
         {{"a"}, {"b"}, {"c"}, {"d"}, {"e"}, {"f"}, {"g"}, {"h"}}},
        {"| \u00A0a\u3000 |", {{"\u00A0a\u3000"}}},
    };
    for (const auto& [line, rows] : cases) EXPECT_EQ(rowsOf(line), rows) << line;
}

TEST(TextTable, TakesTheFirstWordOfAHeadingForASection) {
    const struct {
        std::string_view heading;
        std::string_view name;  ///< "" when it starts no section
    } cases[] = {{"## Keys", "keys"},
                 {"*Keys pressed", "keys"},
                 {"**## * KEYS", ""},
                 {"# Ärger", "ärger"},
                 {"# active_hours", "active_hours"},
                 {"# Day 2", "day"},
                 {"#\tDay\t2", "day"},
                 {"# 2026-09-20", ""},
                 {"#+title: Keys", ""},
                 {"#", ""},
                 {"* * *", ""},
                 {"# Day2", ""},
                 {"# Day: x", ""}};
    for (const auto& [heading, name] : cases) {
        const auto sections = TextTable::sections(heading);
        EXPECT_EQ(sections.empty() ? "" : sections[0].name, name) << heading;
    }
    EXPECT_THAT(TextTable::sections("| before |\n# A\n| 1 |\n# 2\n| 2 |\n# A\n"),
                ElementsAre(TextTable::Section{"a", {{"1"}, {"2"}}}, TextTable::Section{"a", {}}));
}

TEST(TableReader, NumbersLinesAsAnEditorDoes) {
    TableReader reader("\n\n* Keys\r\n\r\nnothing\n| 1 |\n");
    ASSERT_TRUE(reader.next());
    EXPECT_EQ(reader.line(), 3U);
    ASSERT_TRUE(reader.next());
    EXPECT_EQ(reader.line(), 6U);
    EXPECT_FALSE(reader.next());
}

TEST(FileFormat, IsStoredByItsWordAndReadsItselfFirst) {
    EXPECT_EQ(FileFormat::parse("markdown"), FileFormat(FileFormat::markdown));
    EXPECT_EQ(FileFormat::parse("Org"), std::nullopt);
    EXPECT_THAT(FileFormat(FileFormat::org).readOrder(), ElementsAre("org", "md", "tsv"));
    EXPECT_THAT(FileFormat(FileFormat::markdown).readOrder(), ElementsAre("md", "org", "tsv"));
}

TEST(TableReader, PeeksAtRowsOfPlainNumbersAndLeavesAllOthers) {
    struct Case {
        const char* line;
        bool isPlain;
    };
    const Case cases[] = {
        {"|    8 |       0 |   112 |\n", true},
        {"|8|0|112|\n", true},
        {"| 8 | 0 | 999999999999999999 |\n", true},
        {"| 8 | 0 | 9999999999999999999 |\n", false},  // 19 digits may not fit
        {"| 8 | 0 | +112 |\n", false},
        {"| 8 | 0 | -112 |\n", false},
        {"| 8 | 0 |  |\n", false},
        {"| 8 | 0 |\n", false},
        {"| 8 | 0 | 112 | 4 |\n", false},
        {"| 8 | 0 | 1 2 |\n", false},
        {"| 8 | 0 | 112 | \n", false},
        {"| 8 | 0 | 112 |\r\n", false},
        {"| 8 | 0 | 112 |", false},
        {" | 8 | 0 | 112 |\n", false},
        {"8\t0\t112\n", false},
        {"|\n", false},
        {"", false},
    };
    for (const auto& [line, isPlain] : cases) {
        const std::string text = "* Keys\n" + std::string(line);
        TableReader reader(text);
        ASSERT_TRUE(reader.next());
        std::array<std::int64_t, 3> numbers{};
        ASSERT_EQ(reader.peekNumbers(numbers), isPlain) << line;
        if (!isPlain) continue;
        EXPECT_EQ(numbers[0], 8) << line;
        EXPECT_EQ(numbers[1], 0) << line;
        reader.skip();
        EXPECT_FALSE(reader.next()) << line;
    }
}

TEST(TableReader, CountsTheLinesThatItSkips) {
    TableReader reader("* Keys\n| 8 | 0 |\n| 9 | 0 |\n\nodd\n| 9 | x |\n");
    ASSERT_TRUE(reader.next());
    std::array<std::int64_t, 2> numbers{};
    while (reader.peekNumbers(numbers)) reader.skip();
    EXPECT_EQ(numbers[0], 9);
    ASSERT_TRUE(reader.next());
    EXPECT_EQ(reader.line(), 6u);
    EXPECT_THAT(reader.cells(), ElementsAre("9", "x"));
}

}  // namespace
}  // namespace tapcore

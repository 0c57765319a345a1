#include <gtest/gtest.h>

#include <string>

#include "core/files/day_file.h"
#include "core/foundation/file_io.h"

namespace tapcore {
namespace {

/// The text of the first block of docs/file-formats.md that is fenced as being in this language.
std::string example(const std::string& language) {
    const std::string page = readFile(DOCS "/file-formats.md").text;
    const std::string opening = "```" + language + "\n";
    const std::size_t start = page.find(opening);
    if (start == std::string::npos) return "";
    const std::size_t text = start + opening.size();
    return page.substr(text, page.find("```", text) - text);
}

TEST(FileFormatsPage, ShowsADayAsItIsWrittenInBothFormats) {
    const DayFile day(example("org"));
    EXPECT_EQ(day.tally.total(), 1579);
    EXPECT_EQ(day.text(FileFormat::org, {2026, 9, 20}), example("org"));
    EXPECT_EQ(day.text(FileFormat::markdown, {2026, 9, 20}), example("markdown"));
}

TEST(FileFormatsPage, ShowsADayThatReadsTheSameInBothFormatsAndTabSeparated) {
    const DayFile day(example("org"));
    std::string tabbed = example("org");
    for (std::size_t at = 0; (at = tabbed.find(" | ", at)) != std::string::npos;) tabbed.replace(at, 3, "\t");
    std::erase_if(tabbed, [](char c) { return c == '|' || c == ' '; });
    EXPECT_EQ(DayFile(example("markdown")), day);
    EXPECT_EQ(DayFile(tabbed), day);
}

}  // namespace
}  // namespace tapcore

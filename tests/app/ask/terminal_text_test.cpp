#include "app/ask/terminal_text.h"

#include <gtest/gtest.h>

#include <string>

namespace tappora {
namespace {

TEST(TerminalText, ShowsMarkdownAsPeopleReadIt) {
    const std::string markdown =
        "## Your week\n\nYou typed **much more than** usual, see [the day](days/a.md).\n"
        "- one `key`\n  - two words that wrap\n12. three\n| a **b** |\n  ```c\n**code**\n  ```\n2 * 3 ** 4";
    EXPECT_EQ(terminalText(markdown, {.colours = true, .unicode = true, .width = 31}),
              "\033[1mYour\033[0m \033[1mweek\033[0m\n\nYou typed \033[1mmuch\033[0m \033[1mmore\033[0m "
              "\033[1mthan\033[0m usual,\n"
              "see the day (days/a.md).\n• one key\n  • two words that wrap\n12. three\n| a **b** "
              "|\n**code**\n2 * 3 ** 4\n");
    EXPECT_EQ(terminalText("- **a** [b\n", {}), "- a [b\n");
    EXPECT_EQ(terminalText("*a b*, ***c***", {.colours = true}),
              "\033[3ma\033[0m \033[3mb\033[0m, \033[1m\033[3mc\033[0m\033[0m\n");
    EXPECT_EQ(terminalText("* *a*\n  - _b_ _**c**_ **d *e* f** “*ä*”\n*`a b` [c](d)*.", {}),
              "- a\n  - b c d e f “ä”\na b c (d).\n");
    for (const char* plain : {"2 * 3 * 4", "2*3*4", "*a", "a_b_c _ _", "*.org and *.md", "days/*.org, a/*.md",
                              "'*' and “*”, “*”", "(*) (*)", "_", "*a **b", "\\*a\\*", "a* b*", "____"})
        EXPECT_EQ(terminalText(plain, {.colours = true}), std::string(plain) + "\n");
    EXPECT_EQ(terminalText("`a **b** *c* [d](e)`", {.colours = true}), "a **b** *c* [d](e)\n");
    EXPECT_EQ(terminalText("| Day | Keys |\n|---|--:|\n| **Mon** | 1,204 |\n| 日 | 7 | more\nend",
                           {.colours = true, .unicode = true}),
              "\033[1mDay\033[0m   \033[1mKeys\033[0m\n\033[2m───  ─────  ────\033[0m\n"
              "\033[1mMon\033[0m  1,204\n日       7  more\nend\n");
}

}  // namespace
}  // namespace tappora

#include "app/common/terminal/terminal.h"

#include <gtest/gtest.h>

#include <utility>

#include "app/common/harmless_text.h"
#include "tests/support/environment.h"

namespace tappora {
namespace {

TEST(Terminal, HasColoursOnlyWhereAPersonLooksAndWantsThem) {
    struct Case {
        Variables variables;
        bool onTerminal;
        bool colours;
    };
    const Case cases[] = {
        {{}, true, true},
        {{}, false, false},
        {{{"NO_COLOR", "1"}}, true, false},
        {{{"NO_COLOR", ""}}, true, true},
        {{{"TERM", "dumb"}}, true, false},
    };
    for (const Case& each : cases)
        EXPECT_EQ(Terminal::of(environmentWith(each.variables, each.onTerminal)).colours, each.colours)
            << testing::PrintToString(each.variables) << each.onTerminal;
}

TEST(Terminal, ShowsUnicodeWhereTheLocaleThatCountsHasIt) {
    const std::pair<Variables, bool> cases[] = {
        {{}, false},
        {{{"LANG", "de_DE.UTF-8"}}, true},
        {{{"LANG", "C.utf8"}}, true},
        {{{"LANG", "de_DE.UTF-8"}, {"LC_CTYPE", "C"}}, false},
        {{{"LC_CTYPE", "C"}, {"LC_ALL", "C.UTF-8"}}, true},
        {{{"LANG", "C.UTF-8"}, {"LC_ALL", ""}}, true},
        {{{"LANG", "de_DE.ISO-8859-1"}}, false},
    };
    for (const auto& [variables, unicode] : cases)
        EXPECT_EQ(Terminal::of(environmentWith(variables)).unicode, unicode)
            << testing::PrintToString(variables);
}

TEST(Terminal, LetsNobodySteerTheTerminal) {
    EXPECT_EQ(harmless("a\033[2J\r\nb\tc\x7F\xC2\x9B"
                       "d\rü\u0085\u202E\u2066e\x9B"
                       "f\u200D"),
              "a[2J\nb\tcdüe\uFFFDf\u200D");
    EXPECT_EQ(harmlessLine("a\r\nb\tc\033\u2028d\u2029"), "a b c d ");
}

}  // namespace
}  // namespace tappora

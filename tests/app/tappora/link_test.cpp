#include "app/tappora/link.h"

#include <gtest/gtest.h>

#include "app/common/program.h"
#include "tests/support/message_of.h"

namespace tappora {
namespace {

using Command = std::vector<std::string>;

TEST(Link, StandsForACommandThatShowsSomething) {
    const std::pair<std::string, Command> cases[] = {
        {"tappora://summary", {"summary"}},
        {"tappora://summary/", {"summary"}},
        {"tappora://summary?", {"summary"}},
        {"TAPPORA://summary#top", {"summary"}},
        {"tappora://heatmap?from=2026-09-01", {"heatmap", "--from", "2026-09-01"}},
        {"tappora://report/?to=2026-09-20&from=2026-09-01",
         {"report", "--to", "2026-09-20", "--from", "2026-09-01"}},
        {"tappora://summary?from=2026%2D09%2d01", {"summary", "--from", "2026-09-01"}},
        {"tappora://practice?letters=e,%C3%A9,%d0%b6", {"practice", "--letters", "e,é,ж"}},
    };
    for (const auto& [link, command] : cases) EXPECT_EQ(commandOf(link), command) << link;
}

TEST(Link, IsRefusedForAnythingElse) {
    const std::string unreadable = "letters has no value that can be read";
    const std::pair<std::string, std::string> cases[] = {
        {"", "not a link that begins with tappora://"},
        {"tappora:", "not a link that begins with tappora://"},
        {"https://example.org", "not a link that begins with tappora://"},
        {"tappora://", "opens nothing here; use summary, heatmap, report or practice"},
        {"tappora://backup", "opens nothing here; use summary, heatmap, report or practice"},
        {"tappora://Summary", "opens nothing here; use summary, heatmap, report or practice"},
        {"tappora://../summary", "opens nothing here; use summary, heatmap, report or practice"},
        {"tappora://summary?folder=/", "summary has no parameter \"folder\""},
        {"tappora://summary?from", "from has no value that can be read"},
        {"tappora://summary?from=2026-09-01&from=2026-09-01", "from is there twice"},
        {"tappora://summary//", "opens nothing here; use summary, heatmap, report or practice"},
        {"tappora://summary?from=2026-09-01&", ""},
        {"tappora://summary?&", "summary has no parameter \"\""},
        {"tappora://practice?from=2026-09-01", "practice has no parameter \"from\""},
        {"tappora://practice?letters=%", unreadable},
        {"tappora://practice?letters=%C", unreadable},
        {"tappora://practice?letters=%C3", unreadable},
        {"tappora://practice?letters=%G0", unreadable},
        {"tappora://practice?letters=e%00", unreadable},
        {"tappora://practice?letters=e%E2%80%AE", unreadable},
    };
    for (const auto& [link, why] : cases) {
        const std::string message = tapcore::messageOf<UsageError>([&] { commandOf(link); });
        EXPECT_EQ(message, why.empty() ? "" : "LINK: " + link + ": " + why) << link;
    }
    const std::pair<std::string, std::string> values[] = {
        {"tappora://summary?from=2026-9-1", "from: invalid date: 2026-9-1; use YYYY-MM-DD"},
        {"tappora://practice?letters=et", "letters: et: not letters with commas between them"},
        {"tappora://practice?letters=e,", "letters: e,: not letters with commas between them"},
        {"tappora://practice?letters=e,--seed", "letters: e,--seed: not letters with commas between them"},
    };
    for (const auto& [link, why] : values)
        EXPECT_EQ(tapcore::messageOf<UsageError>([&] { return commandOf(link); }), "LINK: " + why);
    EXPECT_EQ(tapcore::messageOf<UsageError>([&] { return commandOf("tappora://su\x1B[1mmary"); }),
              "LINK: tappora://su[1mmary: opens nothing here; use summary, heatmap, report or practice");
    const std::string longest = "tappora://practice?letters=" + std::string(400 - 27, 'e');
    EXPECT_EQ(tapcore::messageOf<UsageError>([&] { commandOf(longest + "e"); }),
              "LINK: " + longest.substr(0, 40) + ": too long for a link");
    EXPECT_TRUE(tapcore::messageOf<UsageError>([&] {
                    commandOf(longest);
                }).ends_with("not letters with commas between them"));
}

}  // namespace
}  // namespace tappora

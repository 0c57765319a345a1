#include "app/ask/retry.h"

#include <gtest/gtest.h>

#include "app/ask/terminal_text.h"

namespace tappora {
namespace {

using tapcore::AssistantWire::Provider;

TEST(Retry, WaitsAsTheServerSaysOrNotAtAll) {
    const tapcore::Instant now{std::chrono::milliseconds(1790000000000)};  // Mon, 21 Sep 2026 14:13:20 GMT
    const struct {
        Provider provider;
        HttpReply reply;
        std::optional<std::int64_t> delay;
    } cases[] = {
        {Provider::openai, {429, {}, ""}, 1000},
        {Provider::claude, {429, {}, ""}, std::nullopt},
        {Provider::claude, {429, {{"retry-after", "7"}}, ""}, 7000},
        {Provider::openai, {429, {{"retry-after", "7"}, {"retry-after-ms", "20"}}, ""}, 20},
        {Provider::openai, {503, {{"retry-after", "Mon, 21 Sep 2026 14:13:25 GMT"}}, ""}, 5000},
        {Provider::openai, {503, {{"retry-after", "Mon, 21 Sep 2020 14:13:25 GMT"}}, ""}, 0},
        {Provider::openai, {503, {{"retry-after", "soon"}}, ""}, 1000},
        {Provider::openai, {503, {{"retry-after", "-3"}}, ""}, 1000},
        {Provider::openai, {503, {{"retry-after", "61"}}, ""}, std::nullopt},
        {Provider::openai, {429, {}, R"({"error":{"code":"insufficient_quota"}})"}, std::nullopt},
        {Provider::claude, {500, {{"x-should-retry", "false"}}, ""}, std::nullopt},
        {Provider::claude, {409, {{"x-should-retry", "true"}}, ""}, 1000},
        {Provider::local, {400, {}, ""}, std::nullopt},
        {Provider::local, {200, {}, ""}, std::nullopt},
    };
    for (const auto& [provider, reply, delay] : cases) {
        const auto got = retryDelay(provider, reply, now);
        EXPECT_EQ(got ? std::optional(got->count()) : std::nullopt, delay) << reply.status << reply.body;
    }
}

TEST(Http, KnowsThisMachineByItsNames) {
    for (const char* url : {"http://localhost:1/v1", "http://LOCALHOST", "http://127.0.0.1",
                            "http://127.9.9.9:8/", "http://[::1]:80/"})
        EXPECT_TRUE(isLoopback(url)) << url;
    for (const char* url : {"http://localhost.example", "http://127.0.0.1.example", "http://10.0.0.1",
                            "http://user@evil", "http://localhost@evil.example", "localhost", ""})
        EXPECT_FALSE(isLoopback(url)) << url;
}

TEST(Http, PrintsNothingSecretOfAnAddress) {
    const struct {
        const char* base;
        const char* below;
        const char* shown;
    } cases[] = {
        {"http://localhost:1/v1//", "http://localhost:1/v1/models", "http://localhost:1/v1/models"},
        {"https://a.example?key=s#x", "https://a.example/models?key=s#x", "https://a.example/models?…"},
        {"https://ann:s@a.example", "https://ann:s@a.example/models", "https://…@a.example/models"},
        {"https:/:s@a.example:8/v1/", "https:/:s@a.example:8/v1/models", "https://…@a.example:8/v1/models"},
    };
    for (const auto& [base, below, shown] : cases) {
        EXPECT_EQ(addressUnder(base, "/models"), below);
        EXPECT_EQ(shownAddress(below), shown);
    }
    for (const char* no : {"", "localhost:1/v1", "ann:s@a.example", "https://", "https://ann:s/t@a.example"})
        EXPECT_FALSE(isAddress(no)) << no;
}

TEST(TerminalText, ShowsMarkdownAsPeopleReadIt) {
    const std::string markdown =
        "## Your week\n\nYou typed **much more than** usual, see [the day](days/a.md).\n"
        "- one `key`\n  - two words that wrap\n12. three\n| a **b** |\n  ```c\n**code**\n  ```\n2 * 3 ** 4";
    EXPECT_EQ(terminalText(markdown, {.colours = true, .unicode = true, .width = 31}),
              "\033[1mYour\033[0m \033[1mweek\033[0m\n\nYou typed \033[1mmuch\033[0m \033[1mmore\033[0m "
              "\033[1mthan\033[0m usual,\n"
              "see the day (days/a.md).\n• one key\n  • two words that wrap\n12. three\n| a **b** "
              "|\n**code**\n2 * 3 ** 4\n");
    EXPECT_EQ(terminalText("- **a** [b\n", {}), "- a [b\n\n");
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

#include "app/ask/retry.h"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace tappora

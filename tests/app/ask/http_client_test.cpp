#include "app/ask/http_client.h"

#include <gtest/gtest.h>

namespace tappora {
namespace {

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

}  // namespace
}  // namespace tappora

#include <sys/stat.h>

#include "tests/app/ask/ask.h"
#include "tests/app/ask/own_network.h"

namespace tappora {
namespace {

TEST_F(Ask, FindsTheServersOfThisMachineAndTheirModels) {
    environment.erase("ANTHROPIC_API_KEY");
    environment.erase("OPENAI_API_KEY");
    enterOwnNetwork();
    const LoopbackServer::Reply listing = {R"({"data":[{"id":"qwen"},{"id":"lla\nma\u202e"}]})"};
    LoopbackServer other({{"<html>"}, {"<html>"}, {"<html>"}}, 11434);
    LoopbackServer empty({{R"({"data":null})"}, {R"({"data":null})"}, {R"({"data":null})"}}, 1234);
    LoopbackServer full({listing, listing, {chat({{"content", "Hi."}}).dump()}, listing, listing}, 8080);
    ASSERT_TRUE(other.hasPort() && empty.hasPort() && full.hasPort()) << "another program has a port";
    EXPECT_EQ(ask({"Hello?"}), 0);
    EXPECT_EQ(program->output(), "Hi.\n");
    EXPECT_THAT(program->errors(), HasSubstr("Asking qwen (http://localhost:8080/v1)\n"));
    EXPECT_EQ(ask({"--models", "--provider", "local"}), 0);
    EXPECT_EQ(program->output(), "qwen\nlla ma\n");
    EXPECT_EQ(program->errors(), "http://localhost:8080/v1\nhttp://localhost:1234/v1\n");
}

TEST_F(Ask, TakesKeysFromFilesThatAreTheUsersAlone) {
    environment.erase("ANTHROPIC_API_KEY");
    environment.erase("OPENAI_API_KEY");
    EXPECT_EQ(askClaude({}), 1);
    EXPECT_THAT(program->errors(), HasSubstr("claude: no key; set ANTHROPIC_API_KEY"));
    home.put("config/tappora/claude.key", "secret-file\n");
    EXPECT_EQ(askClaude({{claude(R"([{"type":"text","text":"Yes."}])").dump()}}), 0);
    EXPECT_THAT(server->requests()[0].head, HasSubstr("x-api-key: secret-file\r\n"));
    ::chmod((home / "config/tappora/claude.key").c_str(), 0644);
    EXPECT_EQ(askClaude({}), 1);
    EXPECT_THAT(program->errors(), HasSubstr("others can read this key"));
    home.put("config/tappora/claude.key", "two\nlines");
    EXPECT_EQ(askClaude({}), 1);
    EXPECT_THAT(program->errors(), HasSubstr("holds no key"));
}

}  // namespace
}  // namespace tappora

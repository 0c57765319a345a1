#include "core/assistant/mcp_server.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tapcore::mcp {
namespace {

using nlohmann::json;
using testing::ElementsAre;

const json modernMeta = {{"io.modelcontextprotocol/protocolVersion", "2026-07-28"},
                         {"io.modelcontextprotocol/clientCapabilities", json::object()}};

/// A line that opens a connection with a handshake.
std::string hello(std::string_view version) {
    return R"({"jsonrpc":"2.0","id":0,"method":"initialize","params":{"capabilities":{},)"
           R"("clientInfo":{"name":"editor","version":"3.1"},"protocolVersion":")" +
           std::string(version) + "\"}}";
}

class Mcp : public testing::Test {
  protected:
    /// What a line is answered with, each line of it as JSON.
    std::vector<json> said(std::string_view line) {
        server.receive(line);
        std::vector<json> answers;
        while (!server.isIdle())
            for (const std::string& text : server.answerNext()) answers.push_back(json::parse(text));
        return answers;
    }
    json answer(std::string_view line) {
        const auto answers = said(line);
        return answers.size() == 1 ? answers[0] : json(answers);
    }

    Server server{Offer{.tools = {}, .prompt = {}, .today = {}, .version = "1.2.3"}};
};

TEST_F(Mcp, NeverBeginsWhatIsCancelledWhileItWaits) {
    server.receive(R"({"jsonrpc":"2.0","id":1,"method":"ping"})");
    server.receive(R"({"jsonrpc":"2.0","id":"1","method":"ping"})");
    EXPECT_EQ(said(R"({"jsonrpc":"2.0","method":"notifications/cancelled","params":{"requestId":1}})"),
              std::vector<json>{json::parse(R"({"jsonrpc":"2.0","id":"1","result":{}})")});
    server.receive(R"({"jsonrpc":"2.0","id":null,"method":"ping"})");
    const char* const ofNone =
        R"({"jsonrpc":"2.0","method":"notifications/cancelled","params":{"requestId":null}})";
    EXPECT_EQ(said(ofNone).size(), 1u) << "a request without a sound id is answered with an error";
}

TEST_F(Mcp, NeverBeginsARequestOfABatchThatIsCancelled) {
    answer(hello("2025-03-26"));
    const std::string ping = R"({"jsonrpc":"2.0","method":"ping","id":)";
    const std::string cancel =
        R"({"jsonrpc":"2.0","method":"notifications/cancelled","params":{"requestId":)";
    server.receive("[" + ping + "1}," + ping + "2}]");
    server.receive("[" + ping + "3}]");
    server.receive(cancel + "3}}");
    EXPECT_EQ(said("[" + ping + "4}," + cancel + "1}}," + cancel + "4}}]"),
              std::vector<json>{json::parse(R"([{"jsonrpc":"2.0","id":2,"result":{}}])")});
}

TEST_F(Mcp, KeepsASubscriptionOpenUntilItsEnd) {
    const auto open = [&](std::string_view id) {
        const json listen = {{"_meta", modernMeta}, {"notifications", {{"toolsListChanged", true}}}};
        return answer(R"({"jsonrpc":"2.0","method":"subscriptions/listen","id":)" + std::string(id) +
                      ",\"params\":" + listen.dump() + "}");
    };
    EXPECT_EQ(open("9"), json::parse(R"({"jsonrpc":"2.0","method":"notifications/subscriptions/acknowledged",
        "params":{"_meta":{"io.modelcontextprotocol/subscriptionId":9},"notifications":{}}})"));
    open(R"("b")");
    said(R"({"jsonrpc":"2.0","method":"notifications/cancelled","params":{"requestId":9}})");
    EXPECT_THAT(server.end(),
                ElementsAre(R"({"id":"b","jsonrpc":"2.0","result":{"_meta":)"
                            R"({"io.modelcontextprotocol/subscriptionId":"b"},"resultType":"complete"}})"));
}

}  // namespace
}  // namespace tapcore::mcp

#include "core/assistant/mcp_server.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "core/foundation/file_io.h"
#include "tests/support/temporary_folder.h"

namespace tapcore::mcp {
namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::IsEmpty;

const json modernMeta = {{"io.modelcontextprotocol/protocolVersion", "2026-07-28"},
                         {"io.modelcontextprotocol/clientCapabilities", json::object()}};
const json serverInfoMeta = {{"io.modelcontextprotocol/serverInfo",
                              {{"name", "tappora"}, {"title", "Tappora"}, {"version", "1.2.3"}}}};

/// A line that opens a connection with a handshake.
std::string hello(std::string_view version) {
    return R"({"jsonrpc":"2.0","id":0,"method":"initialize","params":{"capabilities":{},)"
           R"("clientInfo":{"name":"editor","version":"3.1"},"protocolVersion":")" +
           std::string(version) + "\"}}";
}

class Mcp : public testing::Test {
  protected:
    Offer offer() const {
        const Store store(folder.path(), FileFormat::markdown);
        return {.tools =
                    [=] {
                        return AssistantTools::over(store, Day(2026, 9, 20), {{0, {"a", "A"}}});
                    },
                .prompt = [] { return AgentPrompt{.format = FileFormat::markdown}; },
                .today = [] { return Day(2026, 9, 20); },
                .version = "1.2.3"};
    }

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
    json request(std::string_view method, json params = json::object()) {
        return answer(json{{"jsonrpc", "2.0"}, {"id", 7}, {"method", method}, {"params", params}}.dump());
    }
    json modern(std::string_view method, json params = json::object()) {
        params["_meta"] = modernMeta;
        return request(method, params);
    }
    /// "-32601 Method not found: x" of an answer that is an error.
    static std::string error(const json& answer) {
        if (!answer.contains("error")) return answer.dump();
        return answer["error"]["code"].dump() + " " + answer["error"]["message"].get<std::string>();
    }

    TemporaryFolder folder;
    Server server{offer()};
};

TEST_F(Mcp, TellsTheErasApart) {
    EXPECT_EQ(error(request("tools/list")),
              "-32602 Invalid params: _meta has no io.modelcontextprotocol/protocolVersion");
    EXPECT_EQ(request("ping")["result"], json::object());
    EXPECT_TRUE(modern("tools/list").contains("result"));
    EXPECT_EQ(error(modern("ping")), "-32601 Method not found: ping");
    answer(hello("2025-06-18"));
    EXPECT_TRUE(request("tools/list").contains("result"));
    EXPECT_EQ(error(request("server/discover")), "-32601 Method not found: server/discover");
    EXPECT_EQ(error(request("resources/subscribe")), "-32601 Method not found: resources/subscribe");
    EXPECT_TRUE(modern("server/discover").contains("result"));
}

TEST_F(Mcp, ServesTheStatelessRevisionToTheLetter) {
    EXPECT_EQ(modern("server/discover")["result"],
              (json{{"resultType", "complete"},
                    {"supportedVersions", {"2026-07-28"}},
                    {"capabilities", json::parse(R"({"tools":{},"prompts":{},"resources":{}})")},
                    {"instructions", AgentPrompt::opening()},
                    {"ttlMs", 3600000},
                    {"cacheScope", "public"},
                    {"_meta", serverInfoMeta}}));
    const auto withMeta = [&](const std::string& key, const json& value) {
        json meta = modernMeta;
        meta["io.modelcontextprotocol/" + key] = value;
        return request("tools/list", {{"_meta", meta}});
    };
    const std::string params = "-32602 Invalid params: io.modelcontextprotocol/";
    EXPECT_EQ(error(withMeta("protocolVersion", 3)), params + "protocolVersion is no string");
    EXPECT_EQ(error(withMeta("clientCapabilities", "x")),
              params + "clientCapabilities is missing or no object");
    EXPECT_EQ(error(withMeta("logLevel", "loud")), params + "logLevel is no log level");
    for (const char* unserved : {"2031-01-01", "2025-11-25"})
        EXPECT_EQ(withMeta("protocolVersion", unserved)["error"],
                  (json{{"code", -32022},
                        {"message", "Unsupported protocol version"},
                        {"data", {{"supported", {"2026-07-28"}}, {"requested", unserved}}}}));
}

TEST_F(Mcp, DeclaresTheToolsAsEachRevisionKnowsThem) {
    const json tools = modern("tools/list")["result"]["tools"];
    ASSERT_EQ(tools.size(), 4u);
    EXPECT_EQ(tools[2]["inputSchema"], json::parse(R"({"type":"object","properties":{"path":{"type":"string",
                  "description":"The file's path relative to the data folder."}},
                  "required":["path"],"additionalProperties":false})"));
    EXPECT_EQ(tools[2]["annotations"],
              json::parse(R"({"title":"Read one file","readOnlyHint":true,"destructiveHint":false,
                  "idempotentHint":true,"openWorldHint":false})"));
    EXPECT_EQ(tools[2]["title"], "Read one file");
    EXPECT_EQ(tools[0]["outputSchema"]["type"], "object");
    EXPECT_FALSE(tools[2].contains("outputSchema"));
    for (const auto& [revision, members] :
         {std::pair("2024-11-05", 3), {"2025-03-26", 4}, {"2025-06-18", 6}, {"2025-11-25", 6}}) {
        answer(hello(revision));
        const json result = request("tools/list")["result"];
        EXPECT_EQ(result["tools"][0].size(), members) << revision;
        EXPECT_FALSE(result.contains("ttlMs"));
    }
    EXPECT_EQ(error(request("tools/list", {{"cursor", ""}})), "-32602 Invalid params: no such cursor");
}

TEST_F(Mcp, CallsTools) {
    folder.put("days/2026-09-19.md", "## Keys\n| 9 | 0 | 90 |\n");
    answer(hello("2025-06-18"));
    const auto call = [&](const json& params) { return request("tools/call", params); };
    EXPECT_EQ(call({{"name", "list_files"}, {"arguments", {{"folder", "days"}}}})["result"],
              json::parse(R"({"content":[{"type":"text","text":"days/2026-09-19.md"}]})"));
    EXPECT_EQ(call({{"name", "search"}})["result"],
              json::parse(R"({"content":[{"type":"text","text":"Empty query."}],"isError":true})"));
    EXPECT_EQ(error(call({{"name", "delete_all"}})), "-32602 Unknown tool: delete_all");
    EXPECT_EQ(error(call({{"name", "search"}, {"arguments", "x"}})),
              "-32602 Invalid params: arguments is no object");
    EXPECT_EQ(modern("tools/call", {{"name", "search"}})["result"],
              (json{{"content", {{{"type", "text"}, {"text", "Empty query."}}}},
                    {"isError", true},
                    {"resultType", "complete"},
                    {"_meta", serverInfoMeta}}));
}

TEST_F(Mcp, GivesTheSummaryAsDataToo) {
    folder.put("days/2026-09-19.md", "## Keys\n| 9 | 0 | 90 |\n## Chords\n| 9 | cmd | 0 | 4 |\n");
    answer(hello("2025-11-25"));
    const json arguments = {{"name", "summary"}, {"arguments", {{"from", "2026-09-19"}}}};
    const json result = request("tools/call", arguments)["result"];
    EXPECT_EQ(result["structuredContent"],
              json::parse(R"({"from":"2026-09-19","to":"2026-09-20","days":2,"cut":false,
        "keystrokes":90,"activeHours":1,"averagePerActiveHour":90,"peakPerMinute":0,"clicks":0,"movedMetres":0.0,
        "byHour":[0,0,0,0,0,0,0,0,0,90,0,0,0,0,0,0,0,0,0,0,0,0,0,0],"topKeys":[{"key":"A","count":90}],
        "topShortcuts":[{"shortcut":"⌘A","count":4}],"byDay":[{"day":"2026-09-19","keystrokes":90},
        {"day":"2026-09-20","keystrokes":0}],"keyboardShare":100})"));
    EXPECT_TRUE(
        result["content"][0]["text"].get<std::string>().starts_with("Period 2026-09-19 to 2026-09-20"));
    const json schema = modern("tools/list")["result"]["tools"][0]["outputSchema"];
    for (const auto& [name, value] : result["structuredContent"].items())
        EXPECT_TRUE(schema["properties"].contains(name));
    const json wrong = request("tools/call", {{"name", "summary"}, {"arguments", {{"to", "x"}}}})["result"];
    EXPECT_EQ(wrong["isError"], true);
    EXPECT_FALSE(wrong.contains("structuredContent"));
    answer(hello("2025-03-26"));
    EXPECT_FALSE(request("tools/call", arguments)["result"].contains("structuredContent"));
}

TEST_F(Mcp, OffersThePrompts) {
    answer(hello("2025-06-18"));
    EXPECT_EQ(request("prompts/list")["result"]["prompts"].size(), 2u);
    const auto text = [&](const json& params) {
        return request("prompts/get", params)["result"]["messages"][0]["content"]["text"];
    };
    AgentPrompt prompt{.format = FileFormat::markdown};
    EXPECT_EQ(text({{"name", "read-my-data-folder"}}), prompt.text(folder.path().string()));
    prompt.language = "French";
    EXPECT_EQ(text({{"name", "look-at-my-typing"}, {"arguments", {{"language", "French"}}}}),
              prompt.inApp(Day(2026, 9, 20)));
    EXPECT_EQ(error(request("prompts/get", {{"name", "x"}})), "-32602 Unknown prompt: x");
    EXPECT_EQ(
        error(request("prompts/get", {{"name", "look-at-my-typing"}, {"arguments", {{"language", 3}}}})),
        "-32602 Invalid params: the argument language is no string");
}

TEST_F(Mcp, HandsOutDataFilesAsResourcesAndNothingElse) {
    folder.put("days/2026-09-19.md", "day");
    folder.put("days/ü 1%.org", "odd");
    folder.put("months/2026-08.md", "month");
    folder.put("practice/2026-09-01.md", "practice");
    folder.put("reports/r.md", "report");
    folder.put(".keys/config.json", "{}");
    answer(hello("2025-06-18"));
    const json list = request("resources/list")["result"]["resources"];
    std::vector<std::string> uris;
    for (const json& resource : list) uris.push_back(resource["uri"]);
    EXPECT_THAT(uris, ElementsAre("tappora:///days/%C3%BC%201%25.org", "tappora:///days/2026-09-19.md",
                                  "tappora:///months/2026-08.md", "tappora:///practice/2026-09-01.md"));
    const auto read = [&](std::string_view uri) { return request("resources/read", {{"uri", uri}}); };
    EXPECT_EQ(read(uris[0])["result"]["contents"],
              (json{{{"uri", uris[0]}, {"mimeType", "text/org"}, {"text", "odd"}}}));
    EXPECT_EQ(read("tappora:///reports/r.md")["result"]["contents"][0]["text"], "report");
    for (const char* uri :
         {"tappora:///days/1999-01-01.md", "file:///etc/passwd", "tappora:///%zz/x.md",
          "tappora:///%2ekeys/config.md", "tappora:///days/x.md%00.md", "tappora:///days/%2"})
        EXPECT_EQ(read(uri)["error"],
                  (json{{"code", -32002}, {"message", "Resource not found"}, {"data", {{"uri", uri}}}}));
    EXPECT_EQ(modern("resources/read", {{"uri", "tappora:///days/a.md"}})["error"]["code"], -32602);
    const json modernRead = modern("resources/read", {{"uri", uris[1]}})["result"];
    EXPECT_EQ(modernRead["ttlMs"], 0);
    EXPECT_EQ(modernRead["cacheScope"], "private");
    EXPECT_EQ(request("resources/templates/list")["result"]["resourceTemplates"][1]["uriTemplate"],
              "tappora:///{mac}/{folder}/{name}");
}

TEST_F(Mcp, ListsManyResourcesInPages) {
    folder.put("days/1000.md", "");
    for (int day = 1001; day <= 1500; ++day) std::ofstream(folder / ("days/" + std::to_string(day) + ".md"));
    answer(hello("2025-06-18"));
    const json first = request("resources/list")["result"];
    EXPECT_EQ(first["resources"].size(), 500u);
    const json second = request("resources/list", {{"cursor", first["nextCursor"]}})["result"];
    EXPECT_EQ(second["resources"], json::parse(R"([{"uri":"tappora:///days/1000.md","name":"days/1000.md",
                                                    "mimeType":"text/markdown"}])"));
    EXPECT_FALSE(second.contains("nextCursor"));
    for (const char* cursor : {"", "0", "7", "1000", "x"})
        EXPECT_EQ(error(request("resources/list", {{"cursor", cursor}})),
                  "-32602 Invalid params: no such cursor");
}

TEST_F(Mcp, TakesBatchesInTheOneRevisionThatHasThem) {
    const char* const batch = R"([{"jsonrpc":"2.0","id":1,"method":"ping"},{"jsonrpc":"2.0","method":"x"},7,
                                  {"jsonrpc":"2.0","id":2,"method":"initialize"}])";
    EXPECT_EQ(error(answer(batch)), "-32600 Invalid request: not an object");
    answer(hello("2025-03-26"));
    const json answers = answer(batch);
    ASSERT_EQ(answers.size(), 3u);
    EXPECT_EQ(answers[0]["result"], json::object());
    EXPECT_EQ(error(answers[1]), "-32600 Invalid request: not an object");
    EXPECT_EQ(error(answers[2]), "-32600 Invalid request: initialize in a batch");
    EXPECT_THAT(said(R"([{"jsonrpc":"2.0","method":"x"}])"), IsEmpty());
    EXPECT_EQ(error(answer("[]")), "-32600 Invalid request: an empty batch");
}

TEST_F(Mcp, NeverBeginsWhatIsCancelledWhileItWaits) {
    server.receive(R"({"jsonrpc":"2.0","id":1,"method":"ping"})");
    server.receive(R"({"jsonrpc":"2.0","id":"1","method":"ping"})");
    EXPECT_EQ(said(R"({"jsonrpc":"2.0","method":"notifications/cancelled","params":{"requestId":1}})"),
              std::vector<json>{json::parse(R"({"jsonrpc":"2.0","id":"1","result":{}})")});
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

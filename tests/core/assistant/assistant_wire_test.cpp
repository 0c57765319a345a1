#include "core/assistant/assistant_wire.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "core/assistant/assistant_budget.h"
#include "core/assistant/claude_reply.h"
#include "core/assistant/text_call.h"
#include "core/foundation/file_io.h"
#include "core/foundation/json_fields.h"

namespace tapcore {
namespace {

using namespace AssistantWire;
using nlohmann::json;
using testing::ElementsAre;
using Role = ChatFile::Role;

json expected(std::string_view name) {
    return json::parse(readFile(std::filesystem::path(TEST_DATA) / "assistant" / name).text);
}

const std::vector<AssistantTools::Spec> tools = {
    {"search", "Finds lines.", {{"query", "The text."}}, {"query"}}};

TEST(AssistantWire, WritesRequestsWhole) {
    const json messages = history({{Role::user, "How was my week?", {}}});
    EXPECT_EQ(claudeBody("claude-opus-5", "Be brief.", tools, messages, true, true),
              expected("claude-request.json"));
    EXPECT_EQ(chatBody("gpt-6", "", {}, messages), (json{{"model", "gpt-6"}, {"messages", messages}}));
}

TEST(AssistantWire, SendsEachClaudeModelOnlyWhatItTakes) {
    EXPECT_THAT(claudeHeaders("k", "claude-opus-5"),
                ElementsAre(std::pair("anthropic-beta", "server-side-fallback-2026-07-01"),
                            std::pair("anthropic-version", "2023-06-01"), std::pair("x-api-key", "k")));
    EXPECT_THAT(claudeHeaders("k", "claude-sonnet-5"), testing::SizeIs(2));
    for (const auto& [model, fallbacks, effort] : {std::tuple("claude-opus-5", true, true),
                                                   {"claude-fable-5-1", true, true},
                                                   {"claude-opus-5-5", false, true},
                                                   {"claude-sonnet-5", false, true},
                                                   {"claude-haiku-4-5", false, false}}) {
        EXPECT_EQ(usesFallbacks(model), fallbacks) << model;
        EXPECT_EQ(takesEffort(model), effort) << model;
    }
}

TEST(AssistantWire, MakesEachTurnAMessageAndSendsThemAlternating) {
    const json messages = history({{Role::assistant, "Lost", {}},
                                   {Role::user, "One", {"days/a.md"}},
                                   {Role::assistant, "", {}},
                                   {Role::user, "Two", {}},
                                   {Role::assistant, "Three", {}}});
    EXPECT_EQ(messages, json::parse(R"([{"role":"assistant","content":"Lost"},{"role":"user","content":"One"},
                                        {"role":"assistant","content":""},{"role":"user","content":"Two"},
                                        {"role":"assistant","content":"Three"}])"));
    EXPECT_EQ(
        sendable(messages),
        json::parse(R"([{"role":"user","content":"One\n\nTwo"},{"role":"assistant","content":"Three"}])"));
    EXPECT_EQ(sendable(history({})), json::array());
}

TEST(AssistantWire, ReadsArgumentsInEveryFormThatServersSend) {
    using Arguments = std::map<std::string, std::string>;
    const Arguments query = {{"query", "x"}};
    EXPECT_EQ(arguments({{"query", "x"}, {"limit", 3}, {"deep", {{"a", "b"}}}}), query);
    EXPECT_EQ(arguments(R"({"query":"x","limit":null})"), query);
    for (const json& nothing :
         {json(), json(""), json("{}"), json("not JSON"), json("[1]"), json(7), json::array()})
        EXPECT_EQ(arguments(nothing), Arguments()) << nothing;
    for (const json& useless : {json("not JSON"), json("[1]"), json(7)})
        EXPECT_FALSE(argumentsObject(useless));
}

TEST(AssistantWire, ListsTheModelsThatCanChatNewestFirst) {
    const json listing = json::parse(R"({"data":[
        {"id":"gpt-4o-audio-preview","created":9},{"id":"o3","created":3},{"id":"gpt-5-codex","created":8},
        {"id":"text-embedding-3","created":7},{"id":"gpt-5","created":5},{"id":"gpt-4.1"},{"id":"o3","created":1},
        {"id":"omni","created":6},{"id":7},"x",{"id":"gpt-5-search-api","created":5},{"id":"gpt-5.1","created":5}]})");
    EXPECT_THAT(openaiChatModels(listing), ElementsAre("gpt-5", "gpt-5.1", "o3", "gpt-4.1"));
    EXPECT_THAT(modelIDs(json::parse(R"({"data":[{"id":"b"},{"id":"a"},{"id":"b"}]})")),
                ElementsAre("b", "a"));
    for (const char* none : {R"({"data":null})", R"([])", R"({"error":"no"})"})
        EXPECT_THAT(modelIDs(json::parse(none)), ElementsAre());
}

TEST(AssistantWire, ExplainsFailures) {
    for (const auto& [status, key] : {std::pair(401, "ai.error.key"),
                                      {403, "ai.error.key"},
                                      {429, "ai.error.rate"},
                                      {500, "ai.error.busy"},
                                      {599, "ai.error.busy"}})
        EXPECT_EQ(problemKey(status), key);
    for (const int status : {400, 404, 200, 600}) EXPECT_EQ(problemKey(status), std::nullopt);
    EXPECT_EQ(problemMessage(json::parse(R"({"error":{"message":"no credit","code":7}})")), "no credit");
    EXPECT_EQ(problemMessage(json::parse(R"({"error":"no such path"})")), "no such path");
    for (const char* none : {"{}", "[]", R"({"error":{"message":7}})"})
        EXPECT_EQ(problemMessage(json::parse(none)), std::nullopt);
}

TEST(ClaudeReply, KeepsEveryBlockAndReadsTheTextOfSome) {
    const json document = json::parse(R"({"stop_reason":"tool_use","content":[
        {"type":"thinking","thinking":"","signature":"s"},{"type":"text","text":"One"},{"type":"text","text":""},
        {"type":"tool_use","id":"t","name":"summary","input":{}},{"type":"text","text":"Two"},{"type":"new","x":[1]}]})");
    const ClaudeReply reply = claudeReply(document);
    EXPECT_EQ(reply.text(), "One\n\n\n\nTwo");
    EXPECT_EQ(reply.toolUses(), std::vector<json>{document["content"][3]});
    EXPECT_EQ(claudeTurn(reply), (json{{"role", "assistant"}, {"content", document["content"]}}));
}

TEST(AssistantBudget, CountsWhatIsPaidFor) {
    AssistantBudget budget{.paid = true};
    budget.addClaude(json::parse(R"({"input_tokens":100,"cache_creation_input_tokens":20,
                                     "cache_read_input_tokens":39,"output_tokens":7})"));
    budget.addChat(json::parse(R"({"prompt_tokens":1000,"completion_tokens":70,"total_tokens":1070})"));
    EXPECT_EQ(budget, (AssistantBudget{1123, 77, true}));
    for (const char* useless : {"null", "[]", "{}", R"({"input_tokens":null,"output_tokens":"7"})",
                                R"({"input_tokens":-5,"output_tokens":1.5})"}) {
        budget.addClaude(json::parse(useless));
        budget.addChat(json::parse(useless));
    }
    EXPECT_EQ(budget, (AssistantBudget{1123, 77, true}));
    for (int i = 0; i < 3; ++i) budget.addChat(json::parse(R"({"prompt_tokens":9223372036854775807})"));
    EXPECT_TRUE(budget.spent());
}

TEST(AssistantBudget, IsSpentAtItsLimitsByWhoPays) {
    EXPECT_FALSE((AssistantBudget{149999, 11999, true}.spent()));
    EXPECT_TRUE((AssistantBudget{150000, 0, true}.spent()));
    EXPECT_TRUE((AssistantBudget{0, 12000, true}.spent()));
    EXPECT_FALSE((AssistantBudget{9000000, 9000000, false}.spent()));
}

TEST(TextCall, IsReadInTheFormsThatSmallModelsWrite) {
    const std::vector<AssistantTools::Spec> offered = {{"search", "", {{"query", ""}}, {"query"}}};
    const std::string bare = R"({"name": "search", "arguments": {"query": "a"}})";
    for (const std::string& text :
         {bare, "\n<tool_call>\n" + bare + "\n</tool_call> ", "[TOOL_REQUEST]" + bare + "[END_TOOL_REQUEST]",
          "[TOOL_CALLS][" + bare + "]", "```json\n" + bare + "\n```",
          std::string(R"({"name":"search","parameters":{"query":"a"}})"),
          std::string(R"({"arguments":"{\"query\":\"a\"}","name":"search"})"),
          "Let me look {first}: " + bare + " now.",
          std::string(R"({"function":"search","arguments":{"query":"a"}})"),
          std::string(R"({"tool":"search","parameters":{"query":"a"}})"),
          std::string("```tool_code\nprint(api.search(query='a'))\n```"),
          std::string("I call search(\"a\")."), std::string("search( query = \"\\a\", limit = None )"),
          R"({"tool_calls":[{"type":"function","function":)" + bare + "}]}"}) {
        const auto call = textCall(text, offered);
        ASSERT_TRUE(call) << text;
        EXPECT_EQ(call->name, "search");
        EXPECT_EQ(call->arguments, R"({"query":"a"})");
        EXPECT_TRUE(holdsCall(text, offered));
    }
    for (const char* broken :
         {"Well. <function=search><parameter=query>a", "[TOOL_CALLS][]", "So: <tool_call>{",
          "search(query='a", "Now:\n search(a)", R"({"tool":"x","arguments":)", "```tool_code\nls()\n```",
          R"({ "name": "search", "arguments": {"query": "a)"}) {
        EXPECT_FALSE(textCall(broken, offered)) << broken;
        EXPECT_TRUE(holdsCall(broken, offered)) << broken;
    }
    for (const char* text :
         {"```\ntext\n```", "{}", "{\"name\": \"Ann\"}", "Press { and } often.", "I used search() for it.",
          "search() found it.", "research('a')", "search (a)", "{\"tool\": \"a hammer\"}"})
        EXPECT_FALSE(holdsCall(text, offered)) << text;
}

TEST(TextCall, ThoughtsAreNoPartOfAnAnswer) {
    EXPECT_EQ(withoutThoughts("<think>hm</think>\nYes. <think>\n</think>No."), "Yes. No.");
    EXPECT_EQ(withoutThoughts("Yes.<think>and on and on"), "Yes.");
}

}  // namespace
}  // namespace tapcore

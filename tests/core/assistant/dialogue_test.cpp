#include "core/assistant/dialogue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "core/foundation/file_io.h"
#include "core/foundation/json_fields.h"

namespace tapcore {
namespace {

using nlohmann::json;
using Ending = ModelReply::Ending;
using Make = std::unique_ptr<Dialogue> (*)(DialogueStart);

json expected(std::string_view name) {
    return json::parse(readFile(std::filesystem::path(TEST_DATA) / "assistant" / name).text);
}

DialogueStart start(std::string model, std::vector<AssistantTools::Spec> tools) {
    return {
        std::move(model), "Be brief.", std::move(tools), {{ChatFile::Role::user, "How was my week?", {}}}};
}
const AssistantTools::Spec search = {"search", "Finds lines.", {{"query", "The text."}}, {"query"}};

json claude(std::string_view stop, const char* content) {
    return {{"stop_reason", stop}, {"content", json::parse(content)}, {"usage", {{"output_tokens", 5}}}};
}
json chat(std::string_view finish, const char* message) {
    return {{"choices", {{{"finish_reason", finish}, {"message", json::parse(message)}}}},
            {"usage", {{"completion_tokens", 5}}}};
}

/// What one reply comes to, in a dialogue that has just begun.
ModelReply takenBy(Make make, const json& reply, bool isLast = false) {
    AssistantBudget budget;
    const auto dialogue = make(start("m", {search}));
    if (isLast) dialogue->finish("Answer now.");
    ModelReply taken = dialogue->take(reply, budget);
    EXPECT_EQ(budget.output, 5);
    return taken;
}

TEST(ClaudeDialogue, GivesAllResultsInOneMessageAndTheLastWordBehindThem) {
    AssistantBudget budget;
    const auto dialogue = Dialogue::claude(start("claude-haiku-4-5", {}));
    const json asked = expected("claude-last-request.json")["messages"][1]["content"];
    const ModelReply reply = dialogue->take({{"stop_reason", "tool_use"}, {"content", asked}}, budget);
    EXPECT_EQ(reply.ending, Ending::calls);
    EXPECT_EQ(reply.calls, (std::vector<ToolCall>{{"toolu_1", "list_files", {{"folder", "weeks"}}, true},
                                                  {"toolu_2", "search", {{"query", "shift"}}, true}}));
    dialogue->give({{"No such folder.", true, {}}, {"No lines.", false, {}}});
    dialogue->finish("Answer now.");
    EXPECT_EQ(dialogue->request(), expected("claude-last-request.json"));
}

TEST(ClaudeDialogue, KnowsEveryWayAReplyCanEnd) {
    const char* const text = R"([{"type":"text","text":"Well."}])";
    const char* const use =
        R"([{"type":"text","text":"Well."},{"type":"tool_use","id":"t","name":"search","input":{}}])";
    const auto ending = [](std::string_view stop, const char* content, bool isLast = false) {
        return takenBy(Dialogue::claude, claude(stop, content), isLast).ending;
    };
    EXPECT_EQ(ending("end_turn", text), Ending::answered);
    EXPECT_EQ(ending("stop_sequence", text), Ending::answered);
    EXPECT_EQ(ending("end_turn", "[]"), Ending::empty);
    EXPECT_EQ(ending("end_turn", R"([{"type":"thinking","thinking":"hm"}])"), Ending::empty);
    for (const char* stop : {"tool_use", "end_turn", "stop_sequence", "pause_turn", ""})
        EXPECT_EQ(ending(stop, use), Ending::calls) << stop;
    EXPECT_EQ(takenBy(Dialogue::claude, claude("", text)), (ModelReply{Ending::answered, "Well.", {}, ""}));
    EXPECT_EQ(ending("tool_use", use, true), Ending::answered);
    EXPECT_EQ(ending("max_tokens", use), Ending::cutOff);
    EXPECT_EQ(ending("model_context_window_exceeded", text), Ending::cutOff);
    EXPECT_EQ(ending("pause_turn", text), Ending::paused);
    EXPECT_EQ(
        takenBy(Dialogue::claude, claude("lunch", use)),
        (ModelReply{Ending::answered, "Well.", {}, "the reply ended for a reason unknown here: lunch"}));
    json refusal = claude("refusal", text);
    refusal["stop_details"] = {{"type", "refusal"}, {"category", nullptr}, {"explanation", "Not this."}};
    EXPECT_EQ(takenBy(Dialogue::claude, refusal), (ModelReply{Ending::refused, "", {}, "Not this."}));
}

TEST(ClaudeDialogue, GoesOnAfterAPauseWithoutAWordBetween) {
    AssistantBudget budget;
    const auto dialogue = Dialogue::claude(start("m", {search}));
    dialogue->take(claude("pause_turn", R"([{"type":"server_tool_use","id":"s"}])"), budget);
    dialogue->finish("Answer now.");
    EXPECT_EQ(dialogue->request()["messages"].back()["role"], "assistant");
    EXPECT_EQ(dialogue->request()["tool_choice"]["type"], "none");
}

TEST(ChatDialogue, GivesOneMessageForEachCallAndTheLastWordBehindThem) {
    AssistantBudget budget;
    const auto dialogue = Dialogue::chat(start("qwen", {search}));
    const ModelReply reply =
        dialogue->take(chat("stop", R"({"content":"<think>hm</think>","reasoning":"hm","tool_calls":[
            {"id":"call_1","function":{"name":"summary","arguments":""}},
            {"id":"call_2","type":"function","function":{"name":"search","arguments":{"query":"shift","limit":3}}},
            {"id":"call_2","function":{"name":"search","arguments":"{\"query\""}}]})"),
                       budget);
    EXPECT_EQ(reply.ending, Ending::calls);
    EXPECT_EQ(reply.calls, (std::vector<ToolCall>{{"call_1", "summary", {}, true},
                                                  {"call_2", "search", {{"query", "shift"}}, true},
                                                  {"call_3", "search", {}, false}}));
    dialogue->give({{"Period", false, {}}, {"No lines.", false, {}}, {"Not JSON.", true, {}}});
    dialogue->finish("Answer now.");
    EXPECT_EQ(dialogue->request(), expected("chat-last-request.json"));
}

TEST(ChatDialogue, KnowsEveryWayAReplyCanEnd) {
    const char* const text = R"({"content":"Well."})";
    const char* const call =
        R"({"content":null,"tool_calls":[{"function":{"name":"search","arguments":"{}"}}]})";
    const char* const cutCall =
        R"({"content":"","tool_calls":[{"function":{"name":"search","arguments":"{\"q"}}]})";
    const char* const written = R"({"content":"{\"name\":\"search\",\"arguments\":{\"query\":\"a\"}}"})";
    const char* const unknown = R"({"content":"{\"name\":\"rm\",\"arguments\":{}}"})";
    const auto ending = [](std::string_view finish, const char* message, bool isLast = false) {
        return takenBy(Dialogue::chat, chat(finish, message), isLast).ending;
    };
    EXPECT_EQ(ending("stop", text), Ending::answered);
    EXPECT_EQ(ending("", text), Ending::answered);
    EXPECT_EQ(ending("stop", R"({"content":null,"tool_calls":null})"), Ending::empty);
    EXPECT_EQ(ending("stop", R"({"content":"<think>hm"})"), Ending::empty);
    EXPECT_EQ(ending("stop", R"({"content":[{"type":"text","text":"Well."}]})"), Ending::answered);
    EXPECT_EQ(ending("stop", call), Ending::calls);
    EXPECT_EQ(ending("stop", call, true), Ending::empty);
    EXPECT_EQ(ending("length", call), Ending::calls);
    EXPECT_EQ(ending("length", cutCall), Ending::cutOff);
    EXPECT_EQ(ending("length", text), Ending::cutOff);
    EXPECT_EQ(ending("content_filter", text), Ending::refused);
    EXPECT_EQ(ending("stop", written), Ending::calls);
    EXPECT_EQ(ending("stop", written, true), Ending::noTools);
    EXPECT_EQ(ending("stop", unknown), Ending::noTools);
    EXPECT_EQ(ending("length", R"({"content":"Now <tool_call>{"})"), Ending::noTools);
    EXPECT_EQ(takenBy(Dialogue::chat, chat("stop", R"({"content":null,"refusal":"I won't."})")),
              (ModelReply{Ending::answered, "I won't.", {}, ""}));
    EXPECT_EQ(takenBy(Dialogue::chat, chat("stop", R"({"content":"Well.","refusal":""})")),
              (ModelReply{Ending::answered, "Well.", {}, ""}));
    EXPECT_EQ(ending("stop", R"({"refusal":"","tool_calls":[{"function":{"name":"search"}}]})"),
              Ending::calls);
}

TEST(Dialogue, SaysOfNoModelThatHasCalledAToolThatItCannot) {
    AssistantBudget budget;
    const char* const written =
        "Now <tool_call>{\"name\":\"search\",\"arguments\":{\"query\":\"a\"}}</tool_call>";
    const json text = {{"content", written}};
    const auto local = Dialogue::chat(start("m", {search}));
    EXPECT_EQ(local->take(chat("stop", text.dump().c_str()), budget),
              (ModelReply{Ending::calls, "", {{"call_0", "search", {{"query", "a"}}, true}}, ""}));
    local->give({{"No lines.", false, {}}});
    local->finish("Answer now.");
    EXPECT_EQ(local->take(chat("stop", text.dump().c_str()), budget).ending, Ending::empty);

    const auto answer = [&](const char* use) {
        return claude("end_turn", json::array({json::parse(use)}).dump().c_str());
    };
    const json textBlock = {{"type", "text"}, {"text", written}};
    const auto remote = Dialogue::claude(start("m", {search}));
    EXPECT_EQ(remote->take(answer(textBlock.dump().c_str()), budget).ending, Ending::noTools);
    remote->take(answer(R"({"type":"tool_use","id":"t","name":"search","input":{}})"), budget);
    EXPECT_EQ(remote->take(answer(textBlock.dump().c_str()), budget).ending, Ending::empty);
}

TEST(ChatDialogue, InventsTheIdsThatServersLeaveOut) {
    AssistantBudget budget;
    const auto dialogue = Dialogue::chat(start("m", {search}));
    const json reply = chat("tool_calls", R"({"tool_calls":[{"id":"","function":{"name":"search"}},
                                              {"function":{"name":"search"}},{"id":"x","function":{"name":"search"}}]})");
    for (const char* ids : {R"(["call_0","call_1","x"])", R"(["call_3","call_4","call_5"])"}) {
        std::vector<std::string> given;
        for (const ToolCall& call : dialogue->take(reply, budget).calls) given.push_back(call.id);
        EXPECT_EQ(json(given).dump(), ids);
        dialogue->give(std::vector<AssistantTools::Output>(3));
    }
}

TEST(Dialogue, RefusesRepliesOfUnknownShape) {
    AssistantBudget budget;
    for (const char* bad : {"null", "[]", "{}", R"({"choices":null})", R"({"choices":[]})",
                            R"({"choices":[{}]})", R"({"choices":[{"message":{"content":7}}]})",
                            R"({"choices":[{"message":{"function_call":{"name":"search"}}}]})",
                            R"({"choices":[{"message":{"tool_calls":[{"function":{}}]}}]})"})
        EXPECT_THROW(Dialogue::chat(start("m", {}))->take(json::parse(bad), budget), JsonError) << bad;
    for (const char* bad : {"null", "{}", R"({"content":"text"})", R"({"content":[{"type":"text"}]})",
                            R"({"content":[],"stop_reason":3})",
                            R"({"content":[{"type":"tool_use","name":"x"}],"stop_reason":"tool_use"})"})
        EXPECT_THROW(Dialogue::claude(start("m", {}))->take(json::parse(bad), budget), JsonError) << bad;
}

TEST(Dialogue, AnswersACallThatCannotBeReadWithHowToDoBetter) {
    const auto output = AssistantTools{}.run(ToolCall{"id", "search", {}, false});
    EXPECT_TRUE(output.isError);
    EXPECT_EQ(
        output.text,
        "The arguments are not a JSON object. Call search again with one, such as {\"folder\": \"days\"}.");
}

}  // namespace
}  // namespace tapcore

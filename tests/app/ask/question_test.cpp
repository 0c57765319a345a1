#include <algorithm>

#include "core/assistant/assistant_budget.h"
#include "tests/app/ask/ask.h"

namespace tappora {
namespace {

TEST_F(Ask, RunsTheToolsThatClaudeAsksForAndPrintsItsAnswer) {
    const auto before = data.files();
    EXPECT_EQ(askClaude({{claude(listDays, "tool_use").dump()},
                         {claude(R"([{"type":"text","text":"**90** keys.\u001b[2J"}])").dump()}},
                        {"--tools"}),
              0);
    EXPECT_EQ(program->output(), "**90** keys.[2J\n");
    EXPECT_THAT(program->errors(), HasSubstr("read_file path=days/2026-09-20.md: 23 characters\n"));
    EXPECT_THAT(program->errors(), HasSubstr("list_files folder=weeks : 63 characters, an error\n"));
    EXPECT_THAT(program->errors(), HasSubstr("20 tokens read, 4 written; of 150,000 and 12,000\n"));
    ASSERT_THAT(server->requests(), SizeIs(2));
    EXPECT_THAT(server->requests()[0].head, HasSubstr("POST /v1/messages HTTP/1.1\r\n"));
    EXPECT_THAT(server->requests()[0].head, HasSubstr("x-api-key: secret-claude\r\n"));
    EXPECT_THAT(server->requests()[0].head, HasSubstr("anthropic-beta: server-side-fallback-2026-07-01\r\n"));
    EXPECT_THAT(sent(0)["system"][0]["text"].get<std::string>(), HasSubstr("Today is 2026-09-20"));
    EXPECT_EQ(sent(1)["messages"][1]["content"], json::parse(listDays));
    EXPECT_EQ(sent(1)["messages"][2]["content"][0], (json{{"type", "tool_result"},
                                                          {"tool_use_id", "t1"},
                                                          {"content", "## Keys\n| 9 | 0 | 90 |\n"},
                                                          {"is_error", false}}));
    EXPECT_EQ(data.files(), before);
}

TEST_F(Ask, SpeaksWithOpenAIAndAdaptsToItsModels) {
    const json call = {
        {"content", nullptr},
        {"tool_calls",
         {{{"id", "c"}, {"function", {{"name", "search"}, {"arguments", "{\"query\":\"keys\"}"}}}}}}};
    server.emplace(std::vector<LoopbackServer::Reply>{
        {R"({"data":[{"id":"gpt-5","created":1},{"id":"gpt-6","created":2},{"id":"whisper"}]})"},
        {R"({"error":{"message":"no tools","param":"reasoning_effort"}})", 400},
        {chat(call, "tool_calls").dump()},
        {chat({{"content", "Done."}}).dump()}});
    EXPECT_EQ(ask({"Keys?", "--provider", "openai", "--url", server->url()}), 0) << program->errors();
    EXPECT_EQ(program->output(), "Done.\n");
    EXPECT_THAT(server->requests()[1].head, HasSubstr("POST /v1/chat/completions"));
    EXPECT_THAT(server->requests()[1].head, HasSubstr("authorization: Bearer secret-openai\r\n"));
    EXPECT_EQ(sent(1)["model"], "gpt-6");
    EXPECT_EQ(sent(2)["reasoning_effort"], "none");
    EXPECT_EQ(sent(3)["messages"].back(),
              (json{{"role", "tool"}, {"tool_call_id", "c"}, {"content", "days/2026-09-20.md:1: ## Keys"}}));
}

TEST_F(Ask, AsksALocalServerWithoutAKeyAndEndsWithItsLastStep) {
    const json call = {{"tool_calls", {{{"function", {{"name", "summary"}}}}}}};
    std::vector<LoopbackServer::Reply> replies(9, {chat(call).dump()});
    replies[0] = {R"({"object":"list","data":[{"id":"qwen"}]})"};
    server.emplace(replies);
    EXPECT_EQ(ask({"Keys?", "--provider", "local", "--url", server->url() + "/"}), 1);
    EXPECT_THAT(program->errors(), HasSubstr("nothing is charged"));
    EXPECT_THAT(program->errors(), HasSubstr("tappora: ask: no answer came"));
    ASSERT_THAT(server->requests(), SizeIs(9));
    EXPECT_THAT(server->requests()[1].head, Not(HasSubstr("uthorization")));
    EXPECT_FALSE(sent(7).contains("tool_choice"));
    EXPECT_EQ(sent(8)["tool_choice"], "none");
    EXPECT_EQ(sent(8)["messages"].back()["content"], tapcore::AssistantBudget::finalWord);
}

TEST_F(Ask, TellsOfKeysAsTheyAreToBeCountedAndOfFilesAsTheyAre) {
    std::filesystem::create_directories(home / "config/tappora");
    home.put("config/tappora/settings.json",
             R"({"keys.remaps": "key 0=key 1", "keyboard.layout": "qwerty"})");
    const char* const calls = R"([{"type":"tool_use","id":"t1","name":"summary","input":{"days":1}},
        {"type":"tool_use","id":"t2","name":"read_file","input":{"path":"days/2026-09-20.md"}}])";
    EXPECT_EQ(
        askClaude({{claude(calls, "tool_use").dump()}, {claude(R"([{"type":"text","text":"S."}])").dump()}}),
        0);
    EXPECT_THAT(sent(1)["messages"][2]["content"][0]["content"].get<std::string>(),
                HasSubstr("Most pressed keys: S 90\n"));
    EXPECT_EQ(sent(1)["messages"][2]["content"][1]["content"], "## Keys\n| 9 | 0 | 90 |\n");
}

TEST_F(Ask, HasTheLastWordOnceTheBudgetIsSpent) {
    EXPECT_EQ(askClaude({{claude(listDays, "tool_use", 150000).dump()},
                         {claude(R"([{"type":"text","text":"So far."}])").dump()}}),
              0);
    ASSERT_THAT(server->requests(), SizeIs(2));
    EXPECT_EQ(sent(1)["messages"][2]["content"].size(), 3u);
    EXPECT_EQ(sent(1)["messages"][2]["content"][2]["text"], tapcore::AssistantBudget::finalWord);
    EXPECT_EQ(sent(1)["tool_choice"], json({{"type", "none"}}));
}

TEST_F(Ask, JoinsWhatIsSaidBetweenPausesAndShowsItHoweverItEnds) {
    const LoopbackServer::Reply pause = {
        claude(R"([{"type":"text","text":"So far."}])", "pause_turn").dump()};
    EXPECT_EQ(askClaude({pause, {claude(R"([{"type":"text","text":"Done."}])").dump()}}), 0);
    EXPECT_EQ(program->output(), "So far.\n\nDone.\n");
    EXPECT_EQ(askClaude(std::vector(8, pause)), 1);
    EXPECT_TRUE(program->output().starts_with("So far.\n\nSo far.\n\n")) << program->output();
    EXPECT_THAT(program->errors(), HasSubstr("ask: the model paused too often to finish its answer\n"));
}

TEST_F(Ask, EndsAtCtrlCBetweenTwoCalls) {
    json calls = json::array();
    for (int i = 0; i < 5000; ++i)
        calls.push_back({{"type", "tool_use"}, {"id", std::to_string(i)}, {"name", "summary"}});
    server.emplace(std::vector<LoopbackServer::Reply>{{claude(calls.dump().c_str(), "tool_use").dump()}});
    PseudoTerminal terminal =
        onTerminal({"Hello?", "--provider", "claude", "--url", server->url(), "--tools"});
    ASSERT_TRUE(terminal.shows("summary: ")) << terminal.seen();
    terminal.type("\x03");  // while it waits for its terminal to take what it printed
    EXPECT_TRUE(terminal.shows("tappora: ask: stopped\r\n")) << terminal.seen();
    EXPECT_EQ(terminal.wait(), 1);
    EXPECT_LT(std::ranges::count(terminal.seen(), '\n'), 5000);
}

TEST_F(Ask, ShowsExactlyWhatWouldLeaveTheMachine) {
    server.emplace(std::vector<LoopbackServer::Reply>{{claude(R"([{"type":"text","text":"Yes."}])").dump()}});
    const std::vector<std::string> arguments = {"How?", "--provider", "claude", "--url", server->url()};
    std::vector<std::string> showing = arguments;
    showing.push_back("--show");
    EXPECT_EQ(ask(showing), 0);
    EXPECT_THAT(server->requests(), SizeIs(0));
    const std::string shown = program->output();
    EXPECT_THAT(shown, HasSubstr("POST " + server->url() + "/messages\n"));
    EXPECT_THAT(shown, HasSubstr("\nx-api-key: (your key)\n"));
    EXPECT_EQ(ask(arguments), 0);
    EXPECT_EQ(shown.substr(shown.find("\n\n") + 2), server->requests()[0].body + "\n");
    PseudoTerminal terminal = onTerminal({"a\u009bb", "--show", "--provider", "claude"});
    EXPECT_TRUE(terminal.shows("{\"content\":\"ab\",\"role\":\"user\"}")) << terminal.seen();
}

}  // namespace
}  // namespace tappora

#include "core/assistant/chat_file.h"
#include "core/foundation/folder_listing.h"
#include "tests/app/ask/ask.h"

namespace tappora {
namespace {

TEST_F(Ask, HoldsAConversationThatIsKept) {
    server.emplace(std::vector<LoopbackServer::Reply>{
        {claude(listDays, "tool_use").dump()},
        {claude(R"([{"type":"text","text":"## You\n\nFine.\nPractise: e, t"}])").dump()},
        {"{}", 401},
        {claude(R"([{"type":"text","text":"Again."}])").dump()},
    });
    EXPECT_EQ(ask({"--provider", "claude", "--url", server->url()},
                  "4\n\nlost?\n/exit\nAnd now?\n/quit \nnot read\n"),
              0)
        << program->errors();
    EXPECT_THAT(program->output(), HasSubstr("  1  How is today?\n"));
    EXPECT_THAT(program->errors(), HasSubstr("tappora: no such command: /exit; use /new or /quit\n"));
    EXPECT_THAT(program->errors(), HasSubstr("To practise: tappora practice --letters \"e, t\"\n"));
    EXPECT_THAT(program->errors(), HasSubstr("The provider did not accept the key."));
    EXPECT_EQ(sent(3)["messages"], json::parse(R"([{"role":"user","content":"How was my week?"},
        {"role":"assistant","content":"## You\n\nFine.\nPractise: e, t"},{"role":"user","content":"And now?"}])"));
    const tapcore::ChatFile chat(data.text("assistant/chat.md"));
    ASSERT_THAT(chat.turns, SizeIs(4));
    EXPECT_EQ(chat.turns[1].text, "## You\n\nFine.\nPractise: e, t");
    EXPECT_EQ(chat.turns[1].read, std::vector<std::string>{"days/2026-09-20.md"});

    EXPECT_EQ(askClaude({{claude(R"([{"type":"text","text":"Yes."}])").dump()}}, {"--continue"}), 0);
    EXPECT_THAT(sent(0)["messages"], SizeIs(5));
    EXPECT_EQ(askClaude({{claude(R"([{"type":"text","text":"New."}])").dump()}}, {"--new"}), 0);
    EXPECT_THAT(sent(0)["messages"], SizeIs(1));
    EXPECT_THAT(tapcore::ChatFile(data.text("assistant/chat.md")).turns, SizeIs(2));
    EXPECT_THAT(tapcore::namesIn(data / "assistant/history"), SizeIs(1));
}

TEST_F(Ask, OffersALessonToAPersonAtATerminal) {
    const LoopbackServer::Reply reply = {
        claude(R"([{"type":"text","text":"**Fine**.\u009b2J\n\nPractise: e, t"}])").dump()};
    server.emplace(std::vector<LoopbackServer::Reply>{reply, reply});
    PseudoTerminal terminal = onTerminal({"--provider", "claude", "--url", server->url()});
    ASSERT_TRUE(terminal.shows("\n> ")) << terminal.seen();
    terminal.type("How?\n");
    EXPECT_TRUE(terminal.shows("\n\033[1mFine\033[0m.2J\r\n\r\nPractise: e, t\r\n")) << terminal.seen();
    ASSERT_TRUE(terminal.shows("Practise e, t now? [y/N] ")) << terminal.seen();
    terminal.type("y\n");
    ASSERT_TRUE(terminal.shows("Esc leaves")) << terminal.seen();
    terminal.type("\033");
    ASSERT_TRUE(terminal.shows("> ")) << terminal.seen();
    terminal.type("How?\n");
    ASSERT_TRUE(terminal.shows("Practise e, t now? [y/N] ")) << terminal.seen();
    terminal.type("n\n");
    ASSERT_TRUE(terminal.shows("\n> ")) << "no lesson: " << terminal.seen();
    terminal.type("/quit\n");
    EXPECT_EQ(terminal.wait(), 0);
    EXPECT_TRUE(terminal.isOrdinary());
}

TEST_F(Ask, SpeaksTheUsersLanguage) {
    environment["LC_ALL"] = "ru_RU.UTF-8";
    environment["LANGUAGE"] = "nl:de_AT";
    server.emplace(std::vector<LoopbackServer::Reply>{{"{}", 401}});
    ask({"--provider", "claude", "--url", server->url()}, "4\n");
    EXPECT_THAT(program->output(), HasSubstr("  4  Wie war meine Woche?\n"));
    EXPECT_THAT(program->errors(), HasSubstr("Der Anbieter hat den Schlüssel abgelehnt."));
    EXPECT_EQ(sent(0)["messages"][0]["content"], "Wie war meine Woche?");
    EXPECT_THAT(sent(0)["system"][0]["text"].get<std::string>(), HasSubstr("Always answer in German, even"));
    home.put("config/tappora/settings.json", R"({"language": "xx"})");
    ask({"Hello?", "--show", "--provider", "claude"});
    EXPECT_THAT(
        program->errors(),
        HasSubstr("language: no such language: xx; use system, de, en, es, fr, ru or uk; the default"));
}

}  // namespace
}  // namespace tappora

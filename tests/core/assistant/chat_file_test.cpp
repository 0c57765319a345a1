#include "core/assistant/chat_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "core/files/store.h"
#include "tests/support/temporary_folder.h"

namespace tapcore {
namespace {

using Role = ChatFile::Role;
using testing::ElementsAre;
namespace fs = std::filesystem;

ChatFile chatOf(std::vector<ChatFile::Turn> turns) {
    ChatFile chat;
    chat.turns = std::move(turns);
    return chat;
}

const ChatFile week = chatOf({
    {Role::user, "How was my week?", {}},
    {Role::assistant,
     "**Quiet.** Two days:\n\n- Monday\n- Tuesday",
     {"days/2026-09-14.org", "days/2026-09-15.org"}},
    {Role::user, "Thanks\n", {}},
});

TEST(ChatFile, IsADocumentToReadInEitherFormat) {
    EXPECT_EQ(
        week.text(FileFormat::markdown),
        "# Ask AI\n\n## You\n\nHow was my week?\n\n## Answer\n\n**Quiet.** Two days:\n\n- Monday\n- Tuesday\n"
        "<!-- read: days/2026-09-14.org, days/2026-09-15.org -->\n\n## You\n\nThanks\n\n");
    EXPECT_EQ(week.text(FileFormat::org),
              "#+title: Ask AI\n\n* You\n\nHow was my week?\n\n* Answer\n\n**Quiet.** Two days:\n\n- "
              "Monday\n- Tuesday\n"
              ":READ: days/2026-09-14.org, days/2026-09-15.org\n\n* You\n\nThanks\n\n");
}

TEST(ChatFile, ReadsWhatAHandHasEdited) {
    EXPECT_EQ(
        ChatFile("lost\n## Question\nWhat?\r\n##  Answer \r\n:READ:a ,, b\nThat.\n<!-- read: c-->\n## no\n"),
        chatOf({{Role::user, "What?\r", {}},
                {Role::assistant, "That.", {"a", "b", "c"}},
                {Role::user, "", {}}}));
    EXPECT_EQ(ChatFile("* Answer\n## not a heading here"),
              chatOf({{Role::assistant, "## not a heading here", {}}}));
    EXPECT_EQ(ChatFile("# Ask AI\r\n\r\n## You\r\n\r\nOne\r\n\r\ntwo\r\n\r\n## Answer\r\n\r\nYes.\r\n"
                       "<!-- read: a, b -->\r\n"),
              chatOf({{Role::user, "One\n\ntwo", {}}, {Role::assistant, "Yes.", {"a", "b"}}}));
    for (const char* text : {"", "\n\n", "# Ask AI", "no heading at all"})
        EXPECT_EQ(ChatFile(text), ChatFile());
}

TEST(ChatFile, IsReadBackTheSameWhateverItsTextsHold) {
    const std::vector<std::string> pieces = {
        "## Answer", "* You",  "** x",  "# Ask AI", "#+title: a", "\\## You",
        "\\\\",      ",* You", ",,",    "* item",   ":READ: a",   "<!-- read: b -->",
        "| a | b |", "\r",     "- one", "",         "",           "\\<!-- read: x",
        "```",       "text",   " ## x", "##",       "ünï"};
    std::mt19937 random(7);
    const auto pick = [&](std::size_t below) {
        return std::uniform_int_distribution<std::size_t>(0, below - 1)(random);
    };
    for (int round = 0; round < 300; ++round) {
        ChatFile chat;
        for (std::size_t turns = pick(4); turns > 0; --turns) {
            ChatFile::Turn turn{pick(2) == 0 ? Role::user : Role::assistant, "", {}};
            for (std::size_t lines = pick(6); lines > 0; --lines)
                turn.text += pieces[pick(pieces.size())] + (lines > 1 || pick(3) == 0 ? "\n" : "");
            for (std::size_t read = pick(3); read > 0; --read)
                turn.read.push_back("days/2026-09-1" + std::to_string(read));
            chat.turns.push_back(std::move(turn));
        }
        for (const FileFormat format : FileFormat::allCases)
            ASSERT_EQ(ChatFile(chat.text(format)), chat) << chat.text(format);
    }
}

class Chats : public testing::Test {
  protected:
    TemporaryFolder folder;
    Store store{folder.path(), FileFormat::markdown, "Studio"};
    Calendar berlin{"Europe/Berlin"};
    Instant morning =
        berlin.moment({.year = 2026, .month = 9, .day = 20, .hour = 8, .minute = 5, .second = 59});
};

TEST_F(Chats, AreKeptInTheOwnSubFolderAndFollowItsFormat) {
    EXPECT_EQ(store.readChat(), ChatFile());
    EXPECT_EQ(store.shelveChat(morning, berlin), std::nullopt);
    folder.put("Studio/assistant/chat.org", week.text(FileFormat::org));
    EXPECT_EQ(store.readChat(), week);
    store.writeChat(week);
    EXPECT_EQ(store.chatURL(), folder / "Studio/assistant/chat.md");
    EXPECT_EQ(folder.text("Studio/assistant/chat.md"), week.text(FileFormat::markdown));
    EXPECT_EQ(folder.files().size(), 1u);
}

TEST_F(Chats, AreShelvedUnderTheirMomentNewestFirst) {
    const fs::path history = folder / "Studio/assistant/history";
    store.writeChat(week);
    EXPECT_EQ(store.shelveChat(morning, berlin), history / "2026-09-20 080559.md");
    EXPECT_EQ(store.readChat(), ChatFile());
    store.writeChat(week);
    EXPECT_EQ(store.shelveChat(morning, berlin), history / "2026-09-20 080600.md");
    folder.put("Studio/assistant/chat.org", "an org one");
    EXPECT_EQ(store.shelveChat(morning, berlin), history / "2026-09-20 080601.org");
    folder.put("Studio/assistant/history/notes.txt", "");
    folder.put("Studio/assistant/history/.hidden.md", "");
    EXPECT_THAT(store.chatHistory(),
                ElementsAre(history / "2026-09-20 080601.org", history / "2026-09-20 080600.md",
                            history / "2026-09-20 080559.md"));
}

TEST_F(Chats, AreNeverReplacedWhenTheyCannotBeRead) {
    folder.put("Studio/assistant/chat.md", "## You\n\ncaf\xE9\n");
    EXPECT_THROW(store.readChat(), fs::filesystem_error);
    EXPECT_THROW(store.writeChat(week), fs::filesystem_error);
    EXPECT_EQ(folder.text("Studio/assistant/chat.md"), "## You\n\ncaf\xE9\n");
    EXPECT_NE(store.shelveChat(morning, berlin), std::nullopt);
    EXPECT_EQ(store.readChat(), ChatFile());

    store.writeChat(week);
    const fs::path history = folder / "Studio/assistant/history";
    fs::remove_all(history);
    fs::create_symlink("history", history);
    FileProblems problems;
    EXPECT_THAT(store.chatHistory(&problems), ElementsAre());
    EXPECT_THAT(problems, ElementsAre(FileProblem{history, 0, "Too many levels of symbolic links"}));
    EXPECT_THROW(store.shelveChat(morning, berlin), fs::filesystem_error);
    EXPECT_EQ(store.readChat(), week);
}

}  // namespace
}  // namespace tapcore

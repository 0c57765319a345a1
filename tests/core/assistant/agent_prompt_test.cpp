#include "core/assistant/agent_prompt.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/assistant/ask_starters.h"
#include "core/foundation/file_io.h"

namespace tapcore {
namespace {

using testing::HasSubstr;
using testing::Not;

/// A text kept as a file, which ends in a line feed that is not part of it.
std::string expected(std::string_view name) {
    std::string text = readFile(std::filesystem::path(TEST_DATA) / "assistant" / name).text;
    text.pop_back();
    return text;
}

Board::Key key(std::optional<KeyCode> code, Board::Hand hand, Board::Finger finger, bool home = false) {
    return {.id = std::to_string(code.value_or(999)),
            .keyCode = code,
            .hand = hand,
            .finger = finger,
            .home = home};
}

Board tiny() {
    using enum Board::Hand;
    using enum Board::Finger;
    return {.id = "tiny",
            .name = "Tiny",
            .keys = {key(36, right, thumb), key(38, right, index, true), key(12, left, pinky),
                     key(0, left, pinky, true), key(49, left, thumb), key(std::nullopt, right, ring, true)}};
}

AgentPrompt prompt() {
    return {
        .format = FileFormat::org,
        .board = tiny(),
        .layout = Layout{.id = "home", .name = "Home"},
        .legends =
            {{51, {"delete"}}, {0, {"a", "A"}}, {36, {"return", ""}}, {1, {"s", "S"}}, {9, {}}, {8, {""}}},
        .language = "French",
        .manual = "https://example.com/manual",
        .macs = {"Air", "Studio"}};
}

TEST(AgentPrompt, TellsAnyAgentWordForWord) {
    EXPECT_EQ(prompt().text("/home/ann/Documents/Tappora"), expected("prompt.txt"));
    EXPECT_THAT(prompt().text(), HasSubstr("\nData folder: <the data folder>\nOrg mode (.org)\n"));
    EXPECT_THAT(prompt().text("/home/\xFF"), HasSubstr("\nData folder: /home/\uFFFD\n"));
}

TEST(AgentPrompt, TellsAModelWithToolsWordForWord) {
    const AgentPrompt plain{.format = FileFormat::markdown, .legends = {{18, {"1", "!"}}}, .language = ""};
    EXPECT_EQ(plain.inApp(Day(2026, 3, 1)), expected("prompt-in-app.txt"));
}

TEST(AgentPrompt, LeavesOutWhatIsNotKnown) {
    AgentPrompt some = prompt();
    some.layout.reset();
    EXPECT_THAT(some.text(), HasSubstr("\nKeyboard: Tiny.\n"));
    some.board = Board{.id = "bare", .name = "Bare"};
    EXPECT_THAT(some.text(), Not(HasSubstr("home row, where")));
    EXPECT_THAT((AgentPrompt{.format = FileFormat::org}.text()),
                HasSubstr("\nKeycodes on my layout: none\n"));
}

TEST(AgentPrompt, OffersTheTwoTextsAroundIt) {
    EXPECT_EQ(std::string(AgentPrompt::opening()) + "\n" + AgentPrompt::formatSection(FileFormat::markdown) +
                  "\n" + AgentPrompt::formatSection(FileFormat::org),
              expected("prompt-around.txt"));
}

TEST(AskStarters, AreTheseQuestions) {
    std::string all;
    for (const auto& starter : AskStarters::featured)
        for (const std::string_view field : {starter.id, starter.symbol, starter.label, starter.prompt})
            all.append(field).append("\n");
    for (const std::string_view key : AskStarters::plain) all.append(key).append("\n");
    EXPECT_EQ(all, expected("starters.txt") + "\n");
}

}  // namespace
}  // namespace tapcore

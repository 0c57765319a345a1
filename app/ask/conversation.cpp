#include "app/ask/conversation.h"

#include <fmt/format.h>

#include <cstdio>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>

#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/common/system/signals.h"
#include "core/assistant/ask_starters.h"
#include "core/foundation/characters.h"
#include "core/foundation/utf8.h"

namespace tappora {
namespace {

void printStarters(const tapcore::Words& words) {
    int number = 0;
    for (const auto& starter : tapcore::AskStarters::featured)
        print(fmt::format("  {}  {}\n", ++number, words.text(starter.label)));
    for (const std::string_view key : tapcore::AskStarters::plain)
        print(fmt::format("  {}  {}\n", ++number, words.text(key)));
}

/// The question that a line means; the number of a starter means that starter.
std::string questionOf(const std::string& line, const tapcore::Words& words) {
    const auto& [featured, plain] = std::pair(tapcore::AskStarters::featured, tapcore::AskStarters::plain);
    if (line.size() != 1 || line[0] < '1' || line[0] > '9') return tapcore::repairedUtf8(line);
    const auto number = static_cast<std::size_t>(line[0] - '1');
    if (number < featured.size()) return std::string(featured[number].prompt);
    if (number < featured.size() + plain.size()) return words.text(plain[number - featured.size()]);
    return line;
}

/// The next line of a conversation; nothing at its end.
std::optional<std::string> nextLine(const Environment& environment) {
    if (environment.onTerminal) print("> ");
    std::fflush(stdout);
    std::string line;
    if (!std::getline(std::cin, line)) {
        if (environment.onTerminal) print("\n");
        return std::nullopt;
    }
    const std::string_view text = tapcore::trimmedWhiteSpace(line);
    return text == "/quit" ? std::nullopt : std::optional<std::string>(text);
}

/// Whether a line is one word behind a slash, and so no question.
bool isCommand(std::string_view line) {
    return line.starts_with('/') && line.find(' ') == std::string_view::npos;
}

void greet(const Asking& with, const tapcore::Words& words) {
    announce(with.questioner.provider().access(), with.model);
    if (const auto turns = with.kept.read().turns.size(); turns > 0)
        fmt::print(stderr, "Continuing a conversation of {} turns\n", turns);
    fmt::print(stderr, "Ask, or type a number; /new starts another conversation, /quit ends\n");
    printStarters(words);
}

/// Does what a line says: starts another conversation, or asks.
void follow(const std::string& line, const Asking& with, const tapcore::Words& words) {
    if (line.empty()) return;
    if (line == "/new") return with.kept.archive();
    if (isCommand(line)) return complain(noSuch("command", line, {"/new", "/quit"}));
    const Interruption interruption(Interruption::Blocked::ends);
    try {
        askQuestion(with, with.kept.read().turns, questionOf(line, words), true);
    } catch (const Failure& failure) {
        complain(failure.what());
    }
}

}  // namespace

void converse(const Asking& with, const tapcore::Words& words) {
    greet(with, words);
    while (const auto line = nextLine(with.environment)) follow(*line, with, words);
}

}  // namespace tappora

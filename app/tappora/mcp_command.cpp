#include <signal.h>
#include <unistd.h>

#include <filesystem>

#include "app/common/assistant/assistant.h"
#include "app/common/command_line/command_line.h"
#include "app/common/keyboard/key_remaps.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/tappora/commands.h"
#include "app/tappora/descriptor_lines.h"
#include "core/assistant/mcp_server.h"

namespace tappora {
namespace {

namespace mcp = tapcore::mcp;

/// Lines that wait to be answered before more are read.
constexpr std::size_t mostWaiting = 1000;

bool writeLines(std::vector<std::string> lines) {
    for (std::string& text : lines)
        if (!writeLine(STDOUT_FILENO, std::move(text))) return false;
    return true;
}

/// Takes in what is there, and waits for something when nothing else is to be done.
void takeIn(mcp::Server& server, LineReader& input) {
    for (std::size_t taken = 0; taken < mostWaiting; ++taken) {
        const auto read = input.next(server.isIdle());
        if (!read) return;
        if (read->isTooLong) server.receiveTooLong();
        else server.receive(read->text);
    }
}

void serve(mcp::Server& server) {
    LineReader input(STDIN_FILENO, mcp::Server::longestLine);
    ::signal(SIGPIPE, SIG_IGN);
    while (true) {
        takeIn(server, input);
        if (server.isIdle() && input.isAtEnd()) break;
        if (!server.isIdle() && !writeLines(server.answerNext())) return;
    }
    writeLines(server.end());
}

/// What the server hands out: the folder as it is at each request, on the day that is then today.
mcp::Offer offerOf(const FolderOptions& folder, const KeyboardOptions& options,
                   const Environment& environment) {
    tapcore::Store store = openShown(folder, environment);
    store.root = std::filesystem::absolute(store.root).lexically_normal();  // one prompt names it
    const auto keyboard = AssistantKeyboard::of(options, environment, store);
    const auto day = [folder, environment] {
        const Environment current = atThisMoment(environment);
        return today(folder, current, current.calendar);
    };
    return {.tools = [=] { return assistantTools(store, keyboard, day()); },
            .prompt = [=] { return assistantPrompt(store, keyboard, std::nullopt); },
            .today = day,
            .version = version().substr(version().find(' ') + 1)};
}

}  // namespace

void mcpCommand(CommandLine& line, const Environment& environment) {
    FolderOptions folder;
    KeyboardOptions keyboard;
    line.describe(
        "Serve the assistant's tools to an agent over the Model Context Protocol\n"
        "The agent starts it and speaks on standard input and output; it only reads the data folder",
        "tappora mcp --folder ~/Documents/Tappora");
    addKeyboardOptions(line, keyboard);
    addFolderOptions(line, folder);
    line.parse();

    mcp::Server server(offerOf(folder, keyboard, environment));
    serve(server);
}

}  // namespace tappora

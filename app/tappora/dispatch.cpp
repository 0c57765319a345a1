#include "app/tappora/dispatch.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

#include "app/common/command_line/command_line.h"
#include "app/common/command_line/companion.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/tappora/commands.h"

namespace tappora {
namespace {

const Command* find(std::string_view name) {
    const auto at = std::find_if(std::begin(commands), std::end(commands),
                                 [&](const Command& command) { return command.name == name; });
    return at == std::end(commands) ? nullptr : at;
}

void execute(const Command& command, CommandLine& line, std::vector<std::string> arguments,
             const Environment& environment) {
    if (const auto* companion = std::get_if<Companion>(&command.runs)) {
        if (!companion->first.empty()) arguments.emplace(arguments.begin(), companion->first);
        becomeCompanion(command.name, companion->program, arguments);
    }
    std::get<0>(command.runs)(line, environment);
}

std::string listOfCommands() {
    std::string list = "Commands:\n";
    for (const Command& command : commands) list += fmt::format("  {:<10} {}\n", command.name, command.does);
    return list + "\nHelp for a command: tappora COMMAND --help";
}

/// `tappora` with nothing but options.
void runWithoutCommand(CommandLine& line, const Environment& environment) {
    line.introduce(
        "Count keys, shortcuts and mouse buttons hour by hour: never the text, never the order\n"
        "Without a command, show today at a glance",
        listOfCommands());
    line.offerVersion(version());
    CommandLine::Commands offered;
    for (const Command& command : commands) offered.emplace_back(command.name, command.does);
    line.offerCommands(std::move(offered));
    glanceCommand(line, environment);
}

int failedUsage(const std::string& name) {
    complain("no such command: " + name + "; see tappora --help");
    return 2;
}

}  // namespace

int dispatch(std::vector<std::string> arguments, const Environment& environment) {
    if (arguments.empty() || arguments.front().starts_with('-')) {
        CommandLine line("tappora", std::move(arguments));
        return guarded(line, [&] { runWithoutCommand(line, environment); });
    }
    const std::string name = arguments.front();
    const Command* command = find(name);
    if (!command) return failedUsage(name);
    arguments.erase(arguments.begin());
    CommandLine line("tappora " + name, arguments);
    return guarded(line, [&] { execute(*command, line, arguments, environment); });
}

}  // namespace tappora

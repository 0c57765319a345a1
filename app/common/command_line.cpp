#include "app/common/command_line.h"

#include <utility>

namespace tappora {
namespace {

std::string exampleText(std::string_view example) { return "Example:\n  " + std::string(example); }

}  // namespace

CommandLine::CommandLine(const std::string& command, std::vector<std::string> arguments)
    : CLI::App("", command), arguments_(std::move(arguments)) {}

void CommandLine::describe(std::string_view does, std::string_view example) {
    description(std::string(does));
    footer(exampleText(example));
}

CLI::App& CommandLine::addSubcommand(const std::string& name, std::string_view does,
                                     std::string_view example) {
    CLI::App* subcommand = add_subcommand(name, std::string(does));
    return *subcommand->footer(exampleText(example));
}

void CommandLine::parse() {
    // CLI11 takes them from the end.
    CLI::App::parse(std::vector<std::string>(arguments_.rbegin(), arguments_.rend()));
}

}  // namespace tappora

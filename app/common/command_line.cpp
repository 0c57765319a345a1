#include "app/common/command_line.h"

#include <algorithm>
#include <utility>

namespace tappora {
namespace {

std::string exampleText(std::string_view example) { return "Example:\n  " + std::string(example); }

}  // namespace

CommandLine::CommandLine(const std::string& command, std::vector<std::string> arguments)
    : CLI::App("", command), arguments_(std::move(arguments)) {
    std::reverse(arguments_.begin(), arguments_.end());  // the order in which CLI11 takes them from the end
}

void CommandLine::describe(std::string_view does, std::string_view example) {
    description(std::string(does));
    footer(exampleText(example));
}

CLI::App& CommandLine::addSubcommand(const std::string& name, std::string_view does,
                                     std::string_view example) {
    CLI::App* subcommand = add_subcommand(name, std::string(does));
    return *subcommand->footer(exampleText(example));
}

void CommandLine::parse() { CLI::App::parse(arguments_); }

}  // namespace tappora

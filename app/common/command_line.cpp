#include "app/common/command_line.h"

#include <utility>

namespace tappora {

CommandLine::CommandLine(const std::string& command, std::vector<std::string> arguments)
    : CLI::App("", command), arguments_(std::move(arguments)) {}

void CommandLine::describe(std::string_view does, std::string_view example) {
    description(std::string(does));
    footer("Example:\n  " + std::string(example));
}

void CommandLine::parse() {
    // CLI11 takes them from the end.
    CLI::App::parse(std::vector<std::string>(arguments_.rbegin(), arguments_.rend()));
}

}  // namespace tappora

#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace tappora {

/// The arguments of one command and the options it takes. A command declares its options on it (see
/// CLI::App), calls `parse`, and has its values.
class CommandLine : public CLI::App {
  public:
    /// `command` is how the user calls it: "tappora summary".
    CommandLine(const std::string& command, std::vector<std::string> arguments);

    /// What the command does, for --help, and one command line that shows it.
    void describe(std::string_view does, std::string_view example);

    /// Adds a subcommand, with what `describe` says of a command.
    CLI::App& addSubcommand(const std::string& name, std::string_view does, std::string_view example);

    /// Throws what `runProgram` and `guarded` turn into an exit status: for --help as for a wrong command
    /// line.
    void parse();

    /// The arguments as they were given.
    const std::vector<std::string>& arguments() const { return arguments_; }

  private:
    std::vector<std::string> arguments_;
};

}  // namespace tappora

#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tappora {

// How a command line explains itself. Only command_line.cpp includes this: CLI11's header is large.

/// --help, in this program's words.
class HelpText : public CLI::Formatter {
  public:
    HelpText();

  private:
    std::string make_option_name(const CLI::Option* option, bool isPositional) const override;
    std::string make_option_opts(const CLI::Option* option) const override;
    std::string make_option_desc(const CLI::Option* option) const override;
};

/// The end of a help text: a command line that shows the command.
std::string exampleFooter(std::string_view example);

/// The description of a check that lets only a range pass.
std::string rangeDescription(double least, double most);

/// Names, each with what it stands for.
using NamedTexts = std::vector<std::pair<std::string, std::string>>;

/// What --help says of a command and its tasks, as JSON for programs: manual pages and completions are made
/// of it. An object with "name", "does", "example", "arguments", "options" and "tasks", each task such an
/// object, and "commands", each with what it does, when there are any. Of an argument or option: "names",
/// "does", and, where it has one, "value" (the word for it), "range", "usually", "required" and "several". A
/// task whose options another program declares has "elsewhere" instead: that one is asked.
std::string helpJson(const CLI::App& command, const NamedTexts& commands);

}  // namespace tappora

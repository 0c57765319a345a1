#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace tappora {

// Command lines, by CLI11, which stays behind this file: its header is so large that it would take longer to
// compile than the commands themselves.

/// An option as it was declared, for saying more about it.
class Option {
  public:
    explicit Option(CLI::Option* declared) : declared_(declared) {}

    /// What --help calls its value. An argument needs none: it is called by its name.
    Option& type(const std::string& name);
    Option& required();
    Option& excludes(const Option& other);
    Option& excludes(const std::string& other);
    Option& needs(const Option& other);
    /// Refuses a number outside of `least` to `most`, and has --help print the two.
    Option& between(double least, double most);
    /// Has --help print the value that is taken when none is given.
    Option& showsDefault();
    /// Of one that may be repeated: each time takes one value.
    Option& takesOneEachTime();

  private:
    CLI::Option* declared_;
};

/// What may be said to a command, or to one of its tasks ("list" in `tappora boards list`). Names are as
/// CLI11 takes them: "-o,--output" for an option, "FILE" for an argument without a name, "!--no-x" for a
/// flag's opposite. The variables hold what was said once the command line has been parsed; they must
/// live until then.
class CommandSyntax {
  public:
    explicit CommandSyntax(CLI::App* app) : app_(app) {}

    Option option(const std::string& name, std::string& value, const std::string& help);
    Option option(const std::string& name, std::optional<std::string>& value, const std::string& help);
    Option option(const std::string& name, std::filesystem::path& value, const std::string& help);
    Option option(const std::string& name, std::vector<std::string>& values, const std::string& help);
    Option option(const std::string& name, std::int64_t& value, const std::string& help);
    Option option(const std::string& name, std::optional<std::int64_t>& value, const std::string& help);
    Option option(const std::string& name, std::optional<std::uint64_t>& value, const std::string& help);
    Option option(const std::string& name, double& value, const std::string& help);
    Option option(const std::string& name, std::optional<double>& value, const std::string& help);

    Option flag(const std::string& name, bool& value, const std::string& help);
    Option flag(const std::string& name, std::optional<bool>& value, const std::string& help);
    Option flag(const std::string& name, std::function<void()> said, const std::string& help);

    /// One that was declared before, by its name.
    Option declared(const std::string& name);

    /// What it does, for --help, and one command line that shows it.
    void describe(std::string_view does, std::string_view example);

    /// Of a task: hands all that follows its name to another program, --help too. It has no options then.
    void passOnWhatFollows();

  protected:
    CLI::App* app_;
};

/// The arguments of one command and what may be said to it. A command declares its options and tasks, calls
/// `parse`, and has its values.
class CommandLine : public CommandSyntax {
  public:
    /// `command` is how the user calls it: "tappora summary".
    CommandLine(const std::string& command, std::vector<std::string> arguments);
    ~CommandLine();
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;

    /// The text above and below the options in --help.
    void introduce(const std::string& above, const std::string& below);

    /// Commands and what each does.
    using Commands = std::vector<std::pair<std::string, std::string>>;
    /// Names the commands of the program, which could have been meant by a word after the options.
    void offerCommands(Commands commands);

    /// Has --version print this.
    void offerVersion(const std::string& text);

    /// Adds a task: its name, what it does and a command line that shows it, both for --help, what declares
    /// its options, and what it does once they have their values. Options that the task shares with the
    /// command are declared for both, with the same variable: they may then be before and after its name,
    /// and any other one is refused.
    void task(const std::string& name, std::string_view does, std::string_view example,
              const std::function<void(CommandSyntax& task)>& declare, std::function<void()> run);

    /// Throws what `guarded` turns into an exit status: for --help as for a wrong command line. --help-json
    /// alone prints the help for programs, which make manual pages and completions of it.
    void parse();

    /// Parses, and runs the task that was named, or `withoutTask`.
    void perform(const std::function<void()>& withoutTask);

    /// What followed the name of a task that passes it on.
    std::vector<std::string> passedOn() const;

    /// The arguments as they were given.
    const std::vector<std::string>& arguments() const { return arguments_; }

  private:
    friend int guarded(const CommandLine& line, const std::function<void()>& work);

    std::unique_ptr<CLI::App> owned_;
    std::vector<std::string> arguments_;
    Commands commands_;
    std::map<std::string, std::function<void()>> tasks_;
};

/// Runs what parses `line` and does its work, prints what goes wrong, and returns the exit status: 0, 1 for a
/// failure, 2 for wrong usage, 3 when nothing is being counted. Prints the help when that was asked for.
int guarded(const CommandLine& line, const std::function<void()>& work);

}  // namespace tappora

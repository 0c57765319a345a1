#include "app/common/command_line/command_line.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <type_traits>
#include <utility>

#include "app/common/command_line/help_text.h"
#include "app/common/program.h"

namespace tappora {
namespace {

/// Has an option refuse what is no number of its kind, which would be cut or wrapped to one.
template <class Number>
Option numeric(CLI::Option* declared) {
    const auto problem = [](const std::string& text) -> std::string {
        Number number{};
        const char* end = text.data() + text.size();
        const auto [stop, error] = std::from_chars(text.data(), end, number);
        if (error == std::errc::result_out_of_range) return "out of range: " + text;
        if (error == std::errc() && stop == end) return "";
        return (std::is_integral_v<Number> ? "not a whole number: " : "not a number: ") + text;
    };
    return Option(declared->check(problem, ""));
}

/// An option as CLI11 declared it. An argument is named by what it is, so that no word for its value follows.
Option plain(CLI::Option* declared) {
    if (declared->get_positional()) declared->type_name("");
    return Option(declared);
}

bool isOf(const CLI::ParseError& error, CLI::ExitCodes kind) {
    return error.get_exit_code() == static_cast<int>(kind);
}

/// The command with the task that was named, as in "tappora folder set".
std::string calledAs(const CLI::App& program) {
    const auto chosen = program.get_subcommands();
    return program.get_name() + (chosen.empty() ? "" : " " + chosen.front()->get_name());
}

std::vector<std::string> tasksOf(const CLI::App& program) {
    std::vector<std::string> names;
    for (const CLI::App* task : program.get_subcommands(nullptr)) names.push_back(task->get_name());
    return names;
}

/// A wrong command line as "WHAT: WHY".
std::string explained(const CLI::ParseError& error, const CLI::App& program,
                      const CommandLine::Commands& commands) {
    using CLI::ExitCodes;
    std::string text = error.what();
    if (isOf(error, ExitCodes::ExtrasError)) {
        const std::string extra = program.remaining(true).front();
        const bool isCommand = std::any_of(commands.begin(), commands.end(),
                                           [&](const auto& command) { return command.first == extra; });
        if (isCommand) return extra + ": options come after the command";
        const std::vector<std::string> tasks = tasksOf(program);
        const bool isTask = !tasks.empty() && program.get_subcommands().empty() && !extra.starts_with('-');
        return isTask ? noSuch("task", extra, tasks) : extra + ": not expected here";
    }
    if (isOf(error, ExitCodes::ConversionError)) return text.substr(text.find(": ") + 2);
    if (text.find(": ") != std::string::npos) return text;
    if (const auto blank = text.find(' '); text.starts_with('-')) return text.insert(blank, ":");
    return calledAs(program) + ": " + text;
}

/// Refuses options that were said to the command, before the name of a task that does not know them.
void requireTaskTakesOptions(const CLI::App& program) {
    const auto chosen = program.get_subcommands();
    if (chosen.empty()) return;
    for (const CLI::Option* option : program.get_options())
        if (option->count() > 0 && chosen.front()->get_option_no_throw(option->get_name()) == nullptr)
            throw UsageError(option->get_name() + ": not for " + calledAs(program) + "; see " +
                             calledAs(program) + " --help");
}

int failed(std::string_view text, int status) {
    complain(text);
    return status;
}

}  // namespace

Option& Option::type(const std::string& name) {
    declared_->type_name(name);
    return *this;
}

Option& Option::required() {
    declared_->required();
    return *this;
}

Option& Option::excludes(const Option& other) {
    declared_->excludes(other.declared_);
    return *this;
}

Option& Option::excludes(const std::string& other) {
    declared_->excludes(other);
    return *this;
}

Option& Option::needs(const Option& other) {
    declared_->needs(other.declared_);
    return *this;
}

Option& Option::between(double least, double most) {
    const auto problem = [=](const std::string& text) -> std::string {
        double number = 0;
        std::from_chars(text.data(), text.data() + text.size(), number);
        const bool isIn = number >= least && number <= most;
        return isIn ? "" : fmt::format("out of range: {}; use {} to {}", text, least, most);
    };
    declared_->check(CLI::Validator(problem, rangeDescription(least, most), ""));
    return *this;
}

Option& Option::showsDefault() {
    declared_->capture_default_str();
    return *this;
}

Option& Option::takesOneEachTime() {
    declared_->allow_extra_args(false);
    return *this;
}

Option CommandSyntax::option(const std::string& name, std::string& value, const std::string& help) {
    return plain(app_->add_option(name, value, help));
}

Option CommandSyntax::option(const std::string& name, std::optional<std::string>& value,
                             const std::string& help) {
    return plain(app_->add_option(name, value, help));
}

Option CommandSyntax::option(const std::string& name, std::filesystem::path& value, const std::string& help) {
    return plain(app_->add_option(name, value, help));
}

Option CommandSyntax::option(const std::string& name, std::vector<std::string>& values,
                             const std::string& help) {
    return plain(app_->add_option(name, values, help));
}

Option CommandSyntax::option(const std::string& name, std::int64_t& value, const std::string& help) {
    return numeric<std::int64_t>(app_->add_option(name, value, help));
}

Option CommandSyntax::option(const std::string& name, std::optional<std::int64_t>& value,
                             const std::string& help) {
    return numeric<std::int64_t>(app_->add_option(name, value, help));
}

Option CommandSyntax::option(const std::string& name, std::optional<std::uint64_t>& value,
                             const std::string& help) {
    return numeric<std::uint64_t>(app_->add_option(name, value, help));
}

Option CommandSyntax::option(const std::string& name, double& value, const std::string& help) {
    return numeric<double>(app_->add_option(name, value, help));
}

Option CommandSyntax::option(const std::string& name, std::optional<double>& value, const std::string& help) {
    return numeric<double>(app_->add_option(name, value, help));
}

Option CommandSyntax::flag(const std::string& name, bool& value, const std::string& help) {
    return Option(app_->add_flag(name, value, help));
}

Option CommandSyntax::flag(const std::string& name, std::optional<bool>& value, const std::string& help) {
    // CLI11 would take it for a counter, and set it to 0 at once.
    const auto said = [&value](std::int64_t times) { value = times > 0; };
    return Option(app_->add_flag_function(name, said, help));
}

Option CommandSyntax::flag(const std::string& name, std::function<void()> said, const std::string& help) {
    return Option(app_->add_flag_callback(name, std::move(said), help));
}

Option CommandSyntax::declared(const std::string& name) { return Option(app_->get_option(name)); }

void CommandSyntax::describe(std::string_view does, std::string_view example) {
    app_->description(std::string(does));
    app_->footer(exampleFooter(example));
}

void CommandSyntax::passOnWhatFollows() {
    app_->set_help_flag();
    app_->prefix_command();
}

CommandLine::CommandLine(const std::string& command, std::vector<std::string> arguments)
    : CommandSyntax(nullptr),
      owned_(std::make_unique<CLI::App>("", command)),
      arguments_(std::move(arguments)) {
    app_ = owned_.get();
    app_->formatter(std::make_shared<HelpText>());
    app_->set_help_flag("-h,--help", "Print this help");
}

CommandLine::~CommandLine() = default;

void CommandLine::introduce(const std::string& above, const std::string& below) {
    app_->description(above);
    app_->footer(below);
}

void CommandLine::offerCommands(Commands commands) { commands_ = std::move(commands); }

void CommandLine::offerVersion(const std::string& text) {
    app_->set_version_flag("--version", text, "Print the version");
}

void CommandLine::task(const std::string& name, std::string_view does, std::string_view example,
                       const std::function<void(CommandSyntax& task)>& declare, std::function<void()> run) {
    app_->require_subcommand(0, 1);
    CommandSyntax task(app_->add_subcommand(name)->group("Tasks"));
    task.describe(does, example);
    declare(task);
    tasks_[name] = std::move(run);
}

void CommandLine::parse() {
    if (arguments_ == std::vector<std::string>{"--help-json"}) {
        print(helpJson(*app_, commands_));
        throw CLI::Success();
    }
    // CLI11 takes them from the end.
    app_->parse(std::vector<std::string>(arguments_.rbegin(), arguments_.rend()));
    requireTaskTakesOptions(*app_);
}

void CommandLine::perform(const std::function<void()>& withoutTask) {
    parse();
    const auto chosen = app_->get_subcommands();
    const auto& run = chosen.empty() ? withoutTask : tasks_.at(chosen.front()->get_name());
    run();
}

std::vector<std::string> CommandLine::passedOn() const {
    return app_->get_subcommands().front()->remaining();
}

int guarded(const CommandLine& line, const std::function<void()>& work) {
    const CLI::App& program = *line.owned_;
    int status = 0;
    std::signal(SIGXFSZ, SIG_IGN);  // a file that may not grow is an error like others, with a name
    try {
        work();
    } catch (const CLI::Success& wish) {  // --help, --version
        program.exit(wish);
    } catch (const NotCounting&) {
        status = 3;
    } catch (const CLI::ParseError& error) {
        const std::string why = explained(error, program, line.commands_);
        return failed(why + "; see " + calledAs(program) + " --help", 2);
    } catch (const UsageError& error) {
        return failed(error.what(), 2);
    } catch (const std::filesystem::filesystem_error& error) {
        return failed(Failure(error).what(), 1);
    } catch (const std::exception& error) {
        return failed(error.what(), 1);
    }
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0)
        return failed("standard output: cannot write", 1);
    return status;
}

}  // namespace tappora

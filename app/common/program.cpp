#include "app/common/program.h"

#include <stdio_ext.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "app/common/terminal.h"

namespace tappora {
namespace {

/// The file that is running; empty where the system does not tell.
std::filesystem::path runningProgram() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error);
}

std::size_t terminalColumns() {
    winsize size{};
    return ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

/// "PATH: WHY" of a failed operation on a file.
std::string explained(const std::filesystem::filesystem_error& error) {
    return error.path1().string() + ": " + error.code().message();
}

bool isOf(const CLI::ParseError& error, CLI::ExitCodes kind) {
    return error.get_exit_code() == static_cast<int>(kind);
}

/// A wrong command line as "WHAT: WHY".
std::string explained(const CLI::ParseError& error, const CLI::App& program) {
    using CLI::ExitCodes;
    std::string text = error.what();
    if (isOf(error, ExitCodes::ExtrasError)) return program.remaining(true).front() + ": not expected here";
    if (isOf(error, ExitCodes::ConversionError)) return text.substr(text.find(": ") + 2);
    if (text.find(": ") != std::string::npos) return text;
    if (const auto blank = text.find(' '); text.starts_with('-')) return text.insert(blank, ":");
    return program.get_name() + ": " + text;
}

int failed(std::string_view text, int status) {
    complain(text);
    return status;
}

}  // namespace

Environment hostEnvironment() {
    return {.variable = [](const std::string& name) -> std::optional<std::string> {
                const char* value = std::getenv(name.c_str());
                return value ? std::optional<std::string>(value) : std::nullopt;
            },
            .now = std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now()),
            .zone = tapcore::Calendar::hostZone(),
            .onTerminal = isatty(STDOUT_FILENO) == 1,
            .columns = terminalColumns(),
            .program = runningProgram()};
}

std::string version() { return "tappora " TAPPORA_VERSION; }

void print(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stdout); }

void forgetOutput() {
    ::__fpurge(stdout);
    std::clearerr(stdout);
}

void complain(std::string_view text) {
    std::fflush(stdout);
    std::fprintf(stderr, "tappora: %s\n", harmless(text).c_str());
}

int guarded(const CLI::App& program, const std::function<void()>& work) {
    try {
        work();
    } catch (const CLI::Success& wish) {  // --help, --version
        program.exit(wish);
    } catch (const CLI::ParseError& error) {
        return failed(explained(error, program) + "; see " + program.get_name() + " --help", 2);
    } catch (const UsageError& error) {
        return failed(error.what(), 2);
    } catch (const std::filesystem::filesystem_error& error) {
        return failed(explained(error), 1);
    } catch (const std::exception& error) {
        return failed(error.what(), 1);
    }
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0)
        return failed("standard output: cannot write", 1);
    return 0;
}

int runProgram(CLI::App& program, int argc, const char* const* argv) {
    program.set_version_flag("--version", version());
    return guarded(program, [&] { program.parse(argc, argv); });
}

}  // namespace tappora

#include "app/common/program.h"

#include <CLI/CLI.hpp>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace tappora {
namespace {

/// The file that is running; empty where the system does not tell.
std::filesystem::path runningProgram() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error);
}

/// "PATH: WHY" of a failed operation on a file.
std::string explained(const std::filesystem::filesystem_error& error) {
    return error.path1().string() + ": " + error.code().message();
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
            .program = runningProgram()};
}

void complain(std::string_view text) {
    std::fflush(stdout);
    std::fprintf(stderr, "tappora: %.*s\n", static_cast<int>(text.size()), text.data());
}

int runProgram(CLI::App& program, int argc, const char* const* argv) {
    try {
        program.parse(argc, argv);
    } catch (const CLI::Success& wish) {  // --help, --version
        return program.exit(wish);
    } catch (const CLI::ParseError& error) {
        return failed(std::string(error.what()) + "; see --help", 2);
    } catch (const UsageError& error) {
        return failed(error.what(), 2);
    } catch (const std::filesystem::filesystem_error& error) {
        return failed(explained(error), 1);
    } catch (const std::exception& error) {
        return failed(error.what(), 1);
    }
    if (std::fflush(stdout) != 0) return failed("standard output: cannot write", 1);
    return 0;
}

}  // namespace tappora

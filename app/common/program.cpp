#include "app/common/program.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <fmt/format.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "app/common/system/host_clock.h"
#include "app/common/terminal/terminal.h"

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

}  // namespace

Environment hostEnvironment() {
    return {.variable = [](const std::string& name) -> std::optional<std::string> {
                const char* value = std::getenv(name.c_str());
                return value ? std::optional<std::string>(value) : std::nullopt;
            },
            .now = hostNow(),
            .calendar = hostCalendar(),
            .onTerminal = isatty(STDOUT_FILENO) == 1,
            .columns = terminalColumns(),
            .program = runningProgram()};
}

tapcore::Instant hostNow() {
    return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
}

Environment atThisMoment(Environment environment) {
    environment.now = hostNow();
    followHostZone();
    return environment;
}

std::string version() { return "tappora " TAPPORA_VERSION; }

std::string noSuch(std::string_view kind, std::string_view value, const std::vector<std::string>& known) {
    std::string list = known.front();
    for (std::size_t i = 1; i < known.size(); ++i) list += (i + 1 == known.size() ? " or " : ", ") + known[i];
    return fmt::format("no such {}: {}; use {}", kind, value, list);
}

void print(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stdout); }

std::string complaint(std::string_view text) { return "tappora: " + harmless(text); }

void complain(std::string_view text) {
    std::fflush(stdout);
    std::fprintf(stderr, "%s\n", complaint(text).c_str());
}

}  // namespace tappora

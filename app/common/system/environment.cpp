#include "app/common/system/environment.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "app/common/system/host_clock.h"

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

}  // namespace tappora

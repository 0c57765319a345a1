#include "app/common/system/environment.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <set>
#include <system_error>
#include <utility>

#include "app/common/program.h"
#include "app/common/system/host_clock.h"

namespace tappora {
namespace {

std::size_t terminalColumns() {
    winsize size{};
    return ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

}  // namespace

Tell tellingOnce(Tell tell) {
    const auto told = std::make_shared<std::set<std::string>>();
    return [=](const std::string& warning) {
        if (told->insert(warning).second) tell(warning);
    };
}

Tell complainingOnce() { return tellingOnce(complain); }

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

std::filesystem::path runningProgram() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error);
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

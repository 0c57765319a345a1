#include "app/tray/tray_programs.h"

#include <glib.h>
#include <signal.h>
#include <sys/types.h>
#include <unistd.h>

#include <array>
#include <memory>

#include "app/common/program.h"
#include "core/foundation/file_io.h"
#include "core/foundation/integers.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;

bool isOnPath(const std::string& program) {
    const std::unique_ptr<char, decltype(&g_free)> found(g_find_program_in_path(program.c_str()), g_free);
    return found != nullptr;
}

/// The processes of a program. Those of other users do not show which program they are.
std::vector<pid_t> processesOf(const fs::path& program) {
    std::vector<pid_t> processes;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator("/proc", error)) {
        const auto process = tapcore::parseInteger(entry.path().filename().string());
        std::error_code hidden;
        if (process && fs::read_symlink(entry.path() / "exe", hidden) == program)
            processes.push_back(static_cast<pid_t>(*process));
    }
    return processes;
}

}  // namespace

std::vector<std::string> terminalOf(const Environment& environment) {
    const std::string named = environment.variable("TERMINAL").value_or("");
    if (!named.empty() && isOnPath(named)) return {named, "-e"};
    if (isOnPath("xdg-terminal-exec")) return {"xdg-terminal-exec"};
    if (isOnPath("gnome-terminal")) return {"gnome-terminal", "--"};
    for (const char* terminal : {"x-terminal-emulator", "konsole", "alacritty", "foot", "xterm"})
        if (isOnPath(terminal)) return {terminal, "-e"};
    return {};
}

bool opensPages() { return isOnPath("xdg-open"); }

std::string tapporaOf(const Environment& environment) {
    const fs::path beside = environment.program.parent_path() / "tappora";
    return tapcore::isThere(beside) ? beside.string() : "tappora";
}

void start(const std::vector<std::string>& commandLine) {
    std::vector<std::string> words = commandLine;
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    GError* error = nullptr;
    if (g_spawn_async(nullptr, arguments.data(), nullptr, G_SPAWN_SEARCH_PATH, nullptr, nullptr, nullptr,
                      &error))
        return;
    const Failure failure(commandLine.front(), error->message);
    g_error_free(error);
    throw failure;
}

bool areWidgetsShown(const fs::path& widgets) { return !processesOf(widgets).empty(); }

void hideWidgets(const fs::path& widgets) {
    for (const pid_t process : processesOf(widgets)) ::kill(process, SIGTERM);
}

}  // namespace tappora

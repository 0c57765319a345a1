#include "app/common/command_line/companion.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "app/common/program.h"
#include "app/common/system/environment.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;

fs::path ownFolder() { return runningProgram().parent_path(); }

std::vector<char*> argumentPointers(std::vector<std::string>& arguments) {
    std::vector<char*> pointers;
    for (std::string& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    return pointers;
}

}  // namespace

std::optional<fs::path> companionFile(std::string_view program) {
    const fs::path folder = ownFolder();
    for (const fs::path& place : {folder, (folder / COMPANIONS_FROM_PROGRAMS).lexically_normal()})
        if (access((place / program).c_str(), X_OK) == 0) return place / program;
    return std::nullopt;
}

void becomeCompanion(std::string_view command, std::string_view program,
                     const std::vector<std::string>& arguments) {
    const auto path = companionFile(program);
    if (!path)
        throw Failure(command, fmt::format("needs {}, which is not installed beside tappora in {}", program,
                                           ownFolder().string()));
    std::vector<std::string> all = {path->string()};
    all.insert(all.end(), arguments.begin(), arguments.end());
    execv(path->c_str(), argumentPointers(all).data());
    throw Failure(path->string(), std::generic_category().message(errno));
}

void becomePainter(const std::string& command, std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), command);
    becomeCompanion(command, "tappora-paint", arguments);
}

}  // namespace tappora

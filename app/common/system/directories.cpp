#include "app/common/system/directories.h"

#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "core/foundation/file_io.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;

/// The directory that a variable names.
std::optional<fs::path> named(const ReadVariable& variable, const char* name) {
    const auto value = variable(name);
    return value && fs::path(*value).is_absolute() ? std::optional<fs::path>(*value) : std::nullopt;
}

std::optional<fs::path> namedOrAtHome(const ReadVariable& variable, const char* name, const char* atHome) {
    if (auto directory = named(variable, name)) return directory;
    const auto home = homeDirectory(variable);
    return home ? std::optional(*home / atHome) : std::nullopt;
}

bool isOwnDirectory(const fs::path& directory) { return isDirectoryOf(directory, ::getuid()); }

}  // namespace

std::optional<fs::path> homeDirectory(const ReadVariable& variable) { return named(variable, "HOME"); }

std::optional<fs::path> configDirectory(const ReadVariable& variable) {
    return namedOrAtHome(variable, "XDG_CONFIG_HOME", ".config");
}

std::optional<fs::path> dataDirectory(const ReadVariable& variable) {
    return namedOrAtHome(variable, "XDG_DATA_HOME", ".local/share");
}

std::optional<fs::path> stateDirectory(const ReadVariable& variable) {
    return namedOrAtHome(variable, "XDG_STATE_HOME", ".local/state");
}

bool isDirectoryOf(const fs::path& directory, unsigned user) {
    struct stat status {};
    return ::lstat(directory.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == user;
}

fs::path required(const std::optional<fs::path>& directory, std::string_view rest) {
    if (!directory) throw Failure("HOME", fmt::format("not set to an absolute path{}", rest));
    return *directory;
}

fs::path runtimeDirectory(const Environment& environment) {
    if (const auto directory = named(environment.variable, "XDG_RUNTIME_DIR")) return *directory / "tappora";
    const fs::path usual = fmt::format("/run/user/{}", ::getuid());
    if (isOwnDirectory(usual)) return usual / "tappora";
    return fmt::format("/tmp/tappora-{}", ::getuid());
}

fs::path madeRuntimeDirectory(const Environment& environment) {
    fs::path directory = runtimeDirectory(environment);
    (void)tapcore::makeFolders(directory);  // it need not outlive the session
    if (!isOwnDirectory(directory))
        throw Failure(directory.string(), "not a directory of this user; locks would be in it");
    return directory;
}

}  // namespace tappora

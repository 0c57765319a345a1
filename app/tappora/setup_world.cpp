#include "app/tappora/setup_world.h"

#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <sstream>
#include <system_error>
#include <vector>

#include "app/common/command_line/companion.h"
#include "app/common/folder/data_folder.h"
#include "app/common/program.h"
#include "app/common/system/child_program.h"
#include "app/common/system/directories.h"
#include "app/common/system/environment.h"
#include "app/common/system/file_text.h"
#include "app/common/system/resources.h"
#include "core/foundation/characters.h"
#include "core/foundation/file_io.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;

/// What `id` says of who runs this.
std::string idOf(const std::string& option) {
    const ProgramEnd id = outputOf({"id", option});
    if (!id.isGood()) throw Failure("id " + option, std::string(tapcore::trimmedWhiteSpace(id.output)));
    return std::string(tapcore::trimmedWhiteSpace(id.output));
}

bool isOnPath(const std::string& program, const Environment& environment) {
    std::istringstream folders(environment.variable("PATH").value_or(""));
    for (std::string folder; std::getline(folders, folder, ':');)
        if (!folder.empty() && ::access((fs::path(folder) / program).c_str(), X_OK) == 0) return true;
    return false;
}

/// The program that gets root's rights, as far as it is known before it is started.
void chooseWayToRoot(SetupWorld& world, const std::optional<std::string>& named,
                     const Environment& environment) {
    if (world.isRoot && !named) return;
    const bool hasOnlyPkexec = !isOnPath("sudo", environment) && isOnPath("pkexec", environment);
    world.rootBy = named ? *named : hasOnlyPkexec ? "pkexec" : "sudo";
    world.hasWayToRoot = isOnPath(world.rootBy, environment);
}

/// A path as it is written into files that others read line by line.
fs::path writable(const fs::path& path) {
    fs::path real = fs::weakly_canonical(path);
    if (real.native().find_first_of("\n\r") != std::string::npos)
        throw Failure(real.string(), "a service cannot use a path with a line end; choose another folder");
    return real;
}

fs::path requiredRecorder() {
    if (const auto recorder = companionFile("tappora-record")) return writable(*recorder);
    throw Failure("tappora-record", "not found beside tappora: install the package tappora again");
}

std::string serviceText(const Environment& environment) {
    const fs::path file = resourceFolder(environment) / "Services" / "tappora-record@.service";
    auto text = optionalText(file, tapcore::readStoredFile(file));
    if (!text) throw Failure(file.string(), "no such file: install the package tappora again");
    return std::move(*text);
}

/// The closest folder to a path that exists: the path itself or one above it.
fs::path existing(fs::path path) {
    while (!tapcore::isThere(path) && path.has_relative_path()) path = path.parent_path();
    return path;
}

void requireOwn(const fs::path& folder) {
    const fs::path place = existing(folder);
    struct stat status {};
    if (::stat(place.c_str(), &status) != 0)
        throw Failure(place.string(), std::generic_category().message(errno));
    if (!S_ISDIR(status.st_mode)) throw Failure(place.string(), "not a folder");
    if (place == folder && status.st_uid != ::getuid())
        throw Failure(folder.string(),
                      "belongs to another user: choose a folder of your own (tappora folder set DIR), "
                      "or have that user run tappora setup");
    if (::access(place.c_str(), W_OK) != 0)
        throw Failure(folder.string(), fmt::format("cannot be written: {}: {}", place.string(),
                                                   std::generic_category().message(errno)));
}

/// Whether a manager of services answers, and if not, what is said instead.
void requireManager(std::vector<std::string> systemctl, const std::string& what) {
    systemctl.insert(systemctl.end(), {"show", "--property=Version"});
    const ProgramEnd end = outputOf(systemctl);
    if (end.isGood() && end.output.starts_with("Version=")) return;
    const std::string said(tapcore::trimmedWhiteSpace(end.output));
    throw Failure(systemctl.front(), fmt::format("{}{}; start tappora record another way, as "
                                                 "recording.md in the documents shows",
                                                 what, said.empty() ? "" : " (" + said + ")"));
}

}  // namespace

SetupWorld setupWorld(const std::optional<std::string>& rootBy, const Environment& environment) {
    SetupWorld world;
    world.user = idOf("-un");
    world.isRoot = idOf("-u") == "0";
    const auto variable = environment.variable;
    if (world.isRoot && variable("SUDO_USER"))
        throw Failure("nothing done",
                      "run tappora setup without sudo: it asks for root's rights where it must");
    world.config = writable(required(configDirectory(variable), ", and neither is XDG_CONFIG_HOME"));
    world.home = writable(variable("HOME").value_or(""));
    world.folder = writable(chooseFolder(FolderOptions{}, environment).root);
    world.settings = world.config / "tappora";
    world.shared = writable(required(dataDirectory(variable), "") / "Tappora");
    world.state = writable(required(stateDirectory(variable), "") / "tappora");
    world.tappora = writable(environment.program);
    world.recorder = requiredRecorder();
    world.widgets = companionFile("tappora-widgets");
    world.tray = companionFile("tappora-tray");
    world.serviceText = serviceText(environment);
    chooseWayToRoot(world, rootBy, environment);
    return world;
}

void requireOwnFolders(const SetupWorld& world) {
    for (const fs::path& folder : {world.folder, world.settings, world.shared, world.state})
        requireOwn(folder);
}

void requireSystemd() { requireManager({"systemctl"}, "systemd does not run here"); }

void requireUserSystemd() {
    requireManager({"systemctl", "--user"}, "no systemd for your session, or no bus to reach it");
}

void requireSafeRecorder(const SetupWorld& world) {
    std::vector<std::string> find = {"find"};
    for (fs::path place = world.recorder;; place = place.parent_path()) {
        find.push_back(place.string());
        if (!place.has_relative_path()) break;
    }
    for (const char* word : {"-maxdepth", "0", "(", "!", "-uid", "0", "-o", "-perm", "/022", ")"})
        find.emplace_back(word);
    const std::string others = outputOf(find).output;
    if (others.empty()) return;
    throw Failure(
        others.substr(0, others.find('\n')),
        "others than root can write it, and so replace the recorder and read all keys: install Tappora "
        "where only root can write, or use user-service");
}

void requireRoot(const SetupWorld& world) {
    if (world.hasWayToRoot) return;
    throw Failure(world.rootBy,
                  "not found, and this needs root's rights: have root do what tappora setup "
                  "--print shows, or name a program with --root-by");
}

}  // namespace tappora

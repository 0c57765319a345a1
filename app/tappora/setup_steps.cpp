#include "app/tappora/setup_steps.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <sstream>

#include "app/common/program.h"
#include "app/common/system/child_program.h"
#include "app/common/system/file_text.h"
#include "app/tappora/setup_root.h"
#include "app/tappora/setup_texts.h"
#include "app/tappora/setup_world.h"
#include "core/foundation/file_io.h"
#include "core/foundation/folder_listing.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;

/// The text of a file that setup wrote; nothing when there is none. Failure when another wrote it.
std::optional<std::string> ownText(const fs::path& path) {
    auto text = optionalText(path, tapcore::readStoredFile(path));
    if (text && !text->starts_with(setupMark))
        throw Failure(path.string(), "not written by tappora setup: move it away first");
    return text;
}

/// The same for removing: what another wrote is none of it.
std::optional<std::string> removableText(const fs::path& path) {
    auto text = optionalText(path, tapcore::readStoredFile(path));
    return text && text->starts_with(setupMark) ? text : std::nullopt;
}

bool isGood(const std::vector<std::string>& commandLine) { return outputOf(commandLine).isGood(); }

/// Whether a list of words from `id` has the group that may read input devices.
bool hasInputGroup(const std::vector<std::string>& id) {
    std::istringstream words(outputOf(id).output);
    for (std::string word; words >> word;)
        if (word == "input") return true;
    return false;
}

bool isIn(const fs::path& home, const fs::path& folder) {
    return !home.empty() && folder.native().starts_with(home.native() + "/");
}

void addMissingFolders(const SetupWorld& world, Changes& changes) {
    for (const fs::path& folder : {world.folder, world.settings, world.shared, world.state})
        if (!tapcore::isThere(folder)) changes.emplace_back(MakeFolder{folder});
}

/// The folders that were made for Tappora, and those around them in the home, the inner ones first.
std::vector<fs::path> madeFolders(const SetupWorld& world) {
    std::vector<fs::path> folders;
    const auto add = [&](const fs::path& folder) {
        if (std::find(folders.begin(), folders.end(), folder) == folders.end()) folders.push_back(folder);
    };
    for (const fs::path& own : {world.shared, world.state, world.settings}) {
        add(own);
        for (fs::path around = own.parent_path(); isIn(world.home, around); around = around.parent_path())
            add(around);
    }
    std::stable_sort(folders.begin(), folders.end(), [](const fs::path& one, const fs::path& other) {
        return one.native().size() > other.native().size();
    });
    return folders;
}

/// What the recorder wrote beside the counts: the widgets' file, and pauses. Counts that wait for their
/// hour's end stay.
void addTidyingUp(const SetupWorld& world, Changes& changes) {
    std::vector<fs::path> files = {world.shared / "widget.json", world.shared / "pause.json"};
    for (const std::string& name : tapcore::listFolder(world.state).names)
        if (name.starts_with("pause-")) files.push_back(world.state / name);
    for (const fs::path& file : files)
        if (tapcore::isThere(file)) changes.emplace_back(RemoveFile{file});
    for (const fs::path& folder : madeFolders(world))
        if (tapcore::isThere(folder)) changes.emplace_back(RemoveEmptyFolder{folder});
}

// The recorder as a system service

bool hasPackagedService() {
    for (const char* folder : {"/usr/lib", "/lib", "/usr/local/lib"})
        if (tapcore::isThere(fs::path(folder) / "systemd/system/tappora-record@.service")) return true;
    return false;
}

std::string serviceGrants(const SetupWorld& world) {
    return fmt::format(
        "It grants one program the right to read all input devices: {}\n"
        "alone gets the group \"input\". It runs as {} from the start of the machine on, has no network, and "
        "can\n"
        "write only to the folders of Tappora. Your other programs get no access.\n",
        world.recorder.string(), world.user);
}

Changes serviceToSetUp(const SetupWorld& world) {
    Changes changes;
    addMissingFolders(world, changes);
    const bool needsService =
        !hasPackagedService() && ownText(ownServiceFile) != std::string(setupMark) + world.serviceText;
    const bool isWritten = ownText(serviceFoldersFile(world)) == serviceFolders(world) && !needsService;
    const std::string service = serviceName(world);
    if (!isWritten || !isGood({"systemctl", "is-enabled", service}) ||
        !isGood({"systemctl", "is-active", service}))
        changes.emplace_back(RunAsRoot{scriptToStartService(world, needsService)});
    return changes;
}

Changes serviceToRemove(const SetupWorld& world) {
    Changes changes;
    if (!removableText(serviceFoldersFile(world))) return changes;
    changes.emplace_back(RunAsRoot{scriptToRemoveService(world)});
    addTidyingUp(world, changes);
    return changes;
}

fs::path userServiceFile(const SetupWorld& world) {
    return world.config / "systemd/user/tappora-record.service";
}

/// Two recorders would count into one folder.
void requireNot(const fs::path& other, std::string_view name) {
    if (removableText(other))
        throw Failure(name,
                      fmt::format("is set up already: remove it first: tappora setup --remove {}", name));
}

void requireForService(const SetupWorld& world) {
    requireNot(userServiceFile(world), "user-service");
    requireOwnFolders(world);
    requireSafeRecorder(world);
    requireSystemd();
    requireRoot(world);
}

Afterwards afterService(const SetupWorld& world, const Environment& environment) {
    return awaitCounting({.name = serviceName(world)}, world, environment);
}

// The recorder as a service of the user's own

std::string userServiceGrants(const SetupWorld& world) {
    return fmt::format(
        "It grants every program that {0} starts the right to read every key that is pressed, passwords too: "
        "{0}\n"
        "gets the group \"input\". The recorder runs while {0} is logged in.\n",
        world.user);
}

Changes userServiceToSetUp(const SetupWorld& world) {
    Changes changes;
    const fs::path file = userServiceFile(world);
    const auto before = ownText(file);
    const bool addsGroup = !hasInputGroup({"id", "-nG", world.user});
    const bool keepsMark = before && before->find(groupMark) != std::string::npos;
    const std::string text = userService(world, addsGroup || keepsMark);
    const std::string name = "tappora-record.service";
    addMissingFolders(world, changes);
    if (before != text) {
        changes.emplace_back(WriteFile{file, text});
        changes.emplace_back(RunProgram{{"systemctl", "--user", "daemon-reload"}, {}});
    }
    if (before != text || !isGood({"systemctl", "--user", "is-enabled", name}))
        changes.emplace_back(
            RunProgram{{"systemctl", "--user", "enable", name}, {"systemctl", "--user", "disable", name}});
    if (addsGroup) changes.emplace_back(RunAsRoot{"usermod -aG input " + shellWord(world.user) + "\n"});
    else if (hasInputGroup({"id", "-nG"}) &&
             (before != text || !isGood({"systemctl", "--user", "is-active", name})))
        changes.emplace_back(RunProgram{{"systemctl", "--user", "restart", name}, {}});
    return changes;
}

Changes userServiceToRemove(const SetupWorld& world) {
    Changes changes;
    const fs::path file = userServiceFile(world);
    const auto text = removableText(file);
    if (!text) return changes;
    changes.emplace_back(
        RunProgram{{"systemctl", "--user", "disable", "--now", "tappora-record.service"}, {}});
    changes.emplace_back(RemoveFile{file});
    changes.emplace_back(RunProgram{{"systemctl", "--user", "daemon-reload"}, {}});
    if (text->find(groupMark) != std::string::npos)
        changes.emplace_back(RunAsRoot{"gpasswd -d " + shellWord(world.user) + " input\n"});
    for (const fs::path& folder : {file.parent_path(), file.parent_path().parent_path()})
        changes.emplace_back(RemoveEmptyFolder{folder});
    addTidyingUp(world, changes);
    return changes;
}

void requireForUserService(const SetupWorld& world) {
    if (tapcore::isThere(serviceFoldersFile(world))) requireNot(serviceFoldersFile(world), "service");
    requireOwnFolders(world);
    requireUserSystemd();
    if (!hasInputGroup({"id", "-nG", world.user})) requireRoot(world);
}

Afterwards afterUserService(const SetupWorld& world, const Environment& environment) {
    if (!hasInputGroup({"id", "-nG"}))
        return {"Log out of all sessions, and in again: counting starts then.\n"};
    return awaitCounting({.name = "tappora-record", .isUsers = true}, world, environment);
}

// What starts when the user logs in to a desktop

struct AtLogin {
    std::string_view name;
    std::string_view command;
};

constexpr AtLogin widgets = {"Tappora widgets", "widgets"};
constexpr AtLogin tray = {"Tappora tray", "tray"};

fs::path entryOf(const SetupWorld& world, const AtLogin& program) {
    return world.config / "autostart" / fmt::format("org.tappora.{}.desktop", program.command);
}

template <const AtLogin& program>
Changes entryToWrite(const SetupWorld& world) {
    const fs::path file = entryOf(world, program);
    const std::string text = autostartEntry(world, program.name, program.command);
    if (ownText(file) == text) return {};
    return {WriteFile{file, text}};
}

template <const AtLogin& program>
Changes entryToRemove(const SetupWorld& world) {
    const fs::path file = entryOf(world, program);
    if (!removableText(file)) return {};
    Changes changes = {RemoveFile{file}, RemoveEmptyFolder{file.parent_path()}};
    if (isIn(world.home, world.config)) changes.emplace_back(RemoveEmptyFolder{world.config});
    return changes;
}

template <const AtLogin& program>
Afterwards afterEntry(const SetupWorld&, const Environment&) {
    return {fmt::format("Starts when you log in; now: tappora {}\n", program.command)};
}

void requireDesktop(const std::optional<fs::path>& program, std::string_view name) {
    if (!program) throw Failure(name, "not installed: install the package tappora-desktop");
}

}  // namespace

std::span<const SetupStep> setupSteps() {
    static constexpr SetupStep steps[] = {
        {"service", "Count keys, with a service of the system", true, serviceGrants, serviceToSetUp,
         serviceToRemove, requireForService, afterService},
        {"user-service", "Count keys, with a service of your own", false, userServiceGrants,
         userServiceToSetUp, userServiceToRemove, requireForUserService, afterUserService},
        {"widgets", "Show the widgets when you log in", true,
         [](const SetupWorld&) -> std::string {
             return "It grants nothing: the widgets read one file with figures.\n";
         },
         entryToWrite<widgets>, entryToRemove<widgets>,
         [](const SetupWorld& world) { requireDesktop(world.widgets, "widgets"); }, afterEntry<widgets>},
        {"tray", "Show count and pause in the tray when you log in", true,
         [](const SetupWorld&) -> std::string {
             return "It grants nothing: the tray asks the recorder, as tappora status and tappora pause "
                    "do.\n";
         },
         entryToWrite<tray>, entryToRemove<tray>,
         [](const SetupWorld& world) { requireDesktop(world.tray, "tray"); }, afterEntry<tray>},
    };
    return steps;
}

}  // namespace tappora

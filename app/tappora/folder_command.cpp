#include <fmt/format.h>
#include <fmt/ranges.h>

#include <optional>
#include <string>

#include "app/common/command_line/command_line.h"
#include "app/common/folder/data_folder.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/tappora/commands.h"
#include "app/tappora/folder_tasks.h"

namespace tappora {
namespace {

/// What the tasks are asked for.
struct Asked {
    FolderOptions folder;
    std::string directory;
    std::string what;  ///< of reset and clear
    std::optional<std::string> format;
    bool usual = false;
    bool json = false;
    bool yes = false;
};

void declareFolder(CommandSyntax& command, Asked& asked) { addFolderOptions(command, asked.folder); }

void declareJson(CommandSyntax& command, Asked& asked) {
    command.flag("--json", asked.json, "Print as JSON");
    declareFolder(command, asked);
}

void declareSet(CommandSyntax& task, Asked& asked) {
    const Option named = task.option("DIR", asked.directory, "The folder");
    task.flag("--usual", asked.usual, "Go back to the default folder").excludes(named);
    declareFolder(task, asked);
}

void declareAdopt(CommandSyntax& task, Asked& asked) {
    task.option("DIR", asked.directory, "The other folder").required();
    declareFolder(task, asked);
}

void declareConvert(CommandSyntax& task, Asked& asked) {
    task.option("--to", asked.format,
                fmt::format("{}, from now on; the folder's own when not given",
                            alternatives(tapcore::FileFormat::words.names())))
        .type("FORMAT");
    declareFolder(task, asked);
}

void declareReset(CommandSyntax& task, Asked& asked) {
    task.option("WHAT", asked.what, "What to forget")
        .type(fmt::format("{}", fmt::join(resetChoices(), "|")))
        .required();
    task.flag("--yes", asked.yes, "Do not ask for confirmation");
    declareFolder(task, asked);
}

void declareClear(CommandSyntax& task, Asked& asked) {
    task.option("WHAT", asked.what, "What to remove: a day (YYYY-MM-DD), all counts or everything")
        .type(fmt::format("{}", fmt::join(clearChoices(), "|")))
        .required();
    task.flag("--yes", asked.yes, "Do not ask for confirmation");
    declareFolder(task, asked);
}

void set(const Asked& asked, const Environment& environment) {
    if (asked.folder.folder) throw UsageError("folder set: name the folder as DIR, without --folder");
    setFolder(asked.usual ? std::nullopt : std::optional(asked.directory), environment);
}

void addPlaces(CommandLine& line, Asked& asked, const Environment& environment) {
    line.task(
        "show", "Show where the folder is and why, and what is in it (the default)",
        "tappora folder show --json", [&](auto& task) { declareJson(task, asked); },
        [&] { showFolder(asked.folder, environment, asked.json); });
    line.task(
        "set", "Choose the folder permanently; create it if it is missing",
        "tappora folder set ~/Sync/Tappora", [&](auto& task) { declareSet(task, asked); },
        [&] { set(asked, environment); });
    line.task(
        "share", "Let several machines write to the folder, each to a sub-folder of its own",
        "tappora folder share", [&](auto& task) { declareFolder(task, asked); },
        [&] { shareFolder(asked.folder, environment); });
    line.task(
        "adopt", "Take over the files of another data folder, if this one has no days yet",
        "tappora folder adopt ~/Documents/Tappora", [&](auto& task) { declareAdopt(task, asked); },
        [&] { adoptFolder(asked.directory, asked.folder, environment); });
}

void addCare(CommandLine& line, Asked& asked, const Environment& environment) {
    line.task(
        "convert", "Convert every file to one format", "tappora folder convert --to markdown",
        [&](auto& task) { declareConvert(task, asked); },
        [&] { convertFolder(asked.format, asked.folder, environment); });
    line.task(
        "rollups", "Update the month files", "tappora folder rollups",
        [&](auto& task) { declareFolder(task, asked); }, [&] { refreshMonths(asked.folder, environment); });
    line.task(
        "check", "List ignored or inconsistent files and rows; silent when all is well",
        "tappora folder check", [&](auto& task) { declareJson(task, asked); },
        [&] { checkDataFolder(asked.folder, environment, asked.json); });
    line.task(
        "reset", "Forget which keys or shortcuts were pressed, or all practice",
        "tappora folder reset heatmap", [&](auto& task) { declareReset(task, asked); },
        [&] { resetFolder(asked.what, asked.yes, asked.folder, environment); });
    line.task(
        "clear", "Remove a day, all counts, or everything", "tappora folder clear 2026-09-20",
        [&](auto& task) { declareClear(task, asked); },
        [&] { clearFolder(asked.what, asked.yes, asked.folder, environment); });
}

}  // namespace

void folderCommand(CommandLine& line, const Environment& environment) {
    Asked asked;
    line.describe("Show the data folder, and take care of it", "tappora folder check");
    declareJson(line, asked);
    addPlaces(line, asked, environment);
    addCare(line, asked, environment);
    line.perform([&] { showFolder(asked.folder, environment, asked.json); });
}

}  // namespace tappora

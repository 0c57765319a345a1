#include <optional>
#include <string>

#include "app/common/command_line.h"
#include "app/common/data_folder.h"
#include "app/common/program.h"
#include "app/tappora/commands.h"
#include "app/tappora/folder_tasks.h"

namespace tappora {
namespace {

/// What the command line asks for: the words of the task, and what it takes.
struct Wish {
    FolderOptions folder;
    std::string directory;
    std::string what;  ///< of reset and clear
    std::optional<std::string> format;
    bool usual = false;
    bool json = false;
    bool yes = false;
};

CommandSyntax task(CommandLine& line, Wish& wish, const std::string& name, std::string_view does,
                   const std::string& example) {
    CommandSyntax task = line.task(name, does, "tappora folder " + example);
    addFolderOptions(task, wish.folder);
    return task;
}

void declarePlaces(CommandLine& line, Wish& wish) {
    task(line, wish, "show", "Where the folder is and why, and what is in it (the default)", "show --json")
        .flag("--json", wish.json, "Print it as JSON");
    CommandSyntax set =
        task(line, wish, "set", "Choose the folder for good; it is made when missing", "set ~/Sync/Tappora");
    const Option named = set.option("DIR", wish.directory, "The folder").type("DIR");
    set.flag("--usual", wish.usual, "Go back to the usual place").excludes(named);
    task(line, wish, "share", "Let several machines write it, each into a sub-folder of its own", "share");
    task(line, wish, "adopt", "Take over the files of another data folder, when this one has no days yet",
         "adopt ~/Documents/Tappora")
        .option("DIR", wish.directory, "The other folder")
        .type("DIR")
        .required();
}

void declareCare(CommandLine& line, Wish& wish) {
    task(line, wish, "convert", "Write every file in one format", "convert --to markdown")
        .option("--to", wish.format, "org or markdown, for good; the folder's own when not given")
        .type("FORMAT");
    task(line, wish, "rollups", "Bring the months' files up to date", "rollups");
    task(line, wish, "check", "Name what does not count or would surprise you; silent when all is well", "check")
        .flag("--json", wish.json, "Print it as JSON");
    CommandSyntax reset =
        task(line, wish, "reset", "Forget which keys or shortcuts were pressed, or all practice", "reset heatmap");
    reset.option("WHAT", wish.what, "heatmap, shortcuts or practice")
        .type("heatmap|shortcuts|practice")
        .required();
    CommandSyntax clear = task(line, wish, "clear", "Remove a day, all counts, or everything", "clear 2026-09-20");
    clear.option("WHAT", wish.what, "A day (YYYY-MM-DD), counts or all").type("DATE|counts|all").required();
    for (CommandSyntax* asking : {&reset, &clear}) asking->flag("--yes", wish.yes, "Do not ask first");
}

void perform(const std::string& name, const Wish& wish, const Environment& environment) {
    if (name == "show") showFolder(wish.folder, environment, wish.json);
    if (name == "set" && wish.folder.folder)
        throw UsageError("folder set: name the folder as DIR, without --folder");
    if (name == "set") setFolder(wish.usual ? std::nullopt : std::optional(wish.directory), environment);
    if (name == "share") shareFolder(wish.folder, environment);
    if (name == "adopt") adoptFolder(wish.directory, wish.folder, environment);
    if (name == "convert") convertFolder(wish.format, wish.folder, environment);
    if (name == "rollups") refreshMonths(wish.folder, environment);
    if (name == "check") checkDataFolder(wish.folder, environment, wish.json);
    if (name == "reset") resetFolder(wish.what, wish.yes, wish.folder, environment);
    if (name == "clear") clearFolder(wish.what, wish.yes, wish.folder, environment);
}

}  // namespace

void folderCommand(CommandLine& line, const Environment& environment) {
    Wish wish;
    line.describe("The data folder: where it is, and its care.", "tappora folder check");
    line.flag("--json", wish.json, "Print it as JSON");
    addFolderOptions(line, wish.folder);
    declarePlaces(line, wish);
    declareCare(line, wish);
    line.parse();
    const std::string chosen = line.chosenTask();
    const std::string name = chosen.empty() ? "show" : chosen;
    perform(name, wish, environment);
}

}  // namespace tappora

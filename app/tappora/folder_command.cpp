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

CLI::App* task(CommandLine& line, const std::string& name, const std::string& does) {
    CLI::App* task = line.add_subcommand(name, does);
    task->fallthrough();
    return task;
}

void declarePlaces(CommandLine& line, Wish& wish) {
    task(line, "show", "Where the folder is and why, and what is in it (the default)")
        ->add_flag("--json", wish.json, "Print it as JSON");
    CLI::App* set = task(line, "set", "Choose the folder for good; it is made when missing");
    auto* named = set->add_option("DIR", wish.directory, "The folder")->type_name("DIR");
    set->add_flag("--usual", wish.usual, "Go back to the usual place")->excludes(named);
    task(line, "share", "Let several machines write it, each into a sub-folder of its own");
    task(line, "adopt", "Take over the files of another data folder, when this one has no days yet")
        ->add_option("DIR", wish.directory, "The other folder")
        ->type_name("DIR")
        ->required();
}

void declareCare(CommandLine& line, Wish& wish) {
    task(line, "convert", "Write every file in one format")
        ->add_option("--to", wish.format, "org or markdown, for good; the folder's own when not given")
        ->type_name("FORMAT");
    task(line, "rollups", "Bring the months' files up to date");
    task(line, "check", "Name what does not count or would surprise you; silent when all is well")
        ->add_flag("--json", wish.json, "Print it as JSON");
    CLI::App* reset = task(line, "reset", "Forget which keys or shortcuts were pressed, or all practice");
    reset->add_option("WHAT", wish.what, "heatmap, shortcuts or practice")
        ->type_name("heatmap|shortcuts|practice")
        ->required();
    CLI::App* clear = task(line, "clear", "Remove a day, all counts, or everything");
    clear->add_option("WHAT", wish.what, "A day (YYYY-MM-DD), counts or all")
        ->type_name("DATE|counts|all")
        ->required();
    for (CLI::App* asking : {reset, clear}) asking->add_flag("--yes", wish.yes, "Do not ask first");
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
    addFolderOptions(line, wish.folder);
    declarePlaces(line, wish);
    declareCare(line, wish);
    line.require_subcommand(0, 1);
    line.parse();
    const auto chosen = line.get_subcommands();
    perform(chosen.empty() ? "show" : chosen.front()->get_name(), wish, environment);
}

}  // namespace tappora

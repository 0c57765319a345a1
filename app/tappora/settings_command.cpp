#include <optional>
#include <string>

#include "app/common/command_line/command_line.h"
#include "app/common/folder/data_folder.h"
#include "app/common/system/environment.h"
#include "app/tappora/commands.h"
#include "app/tappora/settings_tasks.h"

namespace tappora {
namespace {

/// What the tasks are asked for.
struct Asked {
    FolderOptions folder;
    std::string key;
    std::string value;
    std::optional<std::string> group;
    bool json = false;
    bool yes = false;
};

void declareJson(CommandSyntax& command, Asked& asked) {
    command.flag("--json", asked.json, "Print as JSON");
    addFolderOptions(command, asked.folder);
}

void declareKey(CommandSyntax& task, Asked& asked) {
    task.option("SETTING", asked.key, "The setting's name, such as practice.length").type("").required();
}

void declareGet(CommandSyntax& task, Asked& asked) {
    declareKey(task, asked);
    declareJson(task, asked);
}

void declareSet(CommandSyntax& task, Asked& asked) {
    declareKey(task, asked);
    task.option("VALUE", asked.value, "Its value: a number, a word, a text, or true or false")
        .type("")
        .required();
    addFolderOptions(task, asked.folder);
}

void declareUnset(CommandSyntax& task, Asked& asked) {
    declareKey(task, asked);
    addFolderOptions(task, asked.folder);
}

void declareReset(CommandSyntax& task, Asked& asked) {
    task.option("GROUP", asked.group,
                "What is before the first dot of the names, such as practice; all of this machine, "
                "but its id, when not given")
        .type("");
    task.flag("--yes", asked.yes, "Do not ask for confirmation");
    addFolderOptions(task, asked.folder);
}

void addReading(CommandLine& line, Asked& asked, const Environment& environment) {
    line.task(
        "list", "List every setting and what it is set to; * marks what is not the default",
        "tappora settings list --json", [&](auto& task) { declareJson(task, asked); },
        [&] { listSettings(asked.folder, environment, asked.json); });
    line.task(
        "get", "Print what a setting is set to, else its default", "tappora settings get practice.length",
        [&](auto& task) { declareGet(task, asked); },
        [&] { showSetting(asked.key, asked.folder, environment, asked.json); });
}

void addChanging(CommandLine& line, Asked& asked, const Environment& environment) {
    line.task(
        "set", "Set a setting", "tappora settings set practice.length 45",
        [&](auto& task) { declareSet(task, asked); },
        [&] { setSetting(asked.key, asked.value, asked.folder, environment); });
    line.task(
        "unset", "Go back to a setting's default", "tappora settings unset practice.length",
        [&](auto& task) { declareUnset(task, asked); },
        [&] { unsetSetting(asked.key, asked.folder, environment); });
    line.task(
        "reset", "Go back to the defaults of a group, or of all settings", "tappora settings reset practice",
        [&](auto& task) { declareReset(task, asked); },
        [&] { resetSettings(asked.group, asked.yes, asked.folder, environment); });
    line.task(
        "edit", "Open the file of this machine's settings in your editor, and check it [VISUAL, EDITOR]",
        "tappora settings edit", [](auto&) {}, [&] { editSettings(environment); });
}

}  // namespace

void settingsCommand(CommandLine& line, const Environment& environment) {
    Asked asked;
    line.describe("Show and change every choice", "tappora settings");
    declareJson(line, asked);
    addReading(line, asked, environment);
    addChanging(line, asked, environment);
    line.perform([&] { listSettings(asked.folder, environment, asked.json); });
}

}  // namespace tappora

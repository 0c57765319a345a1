#include <string>

#include "app/common/command_line/command_line.h"
#include "app/common/system/environment.h"
#include "app/tappora/commands.h"
#include "app/tappora/keys_tasks.h"

namespace tappora {
namespace {

/// What the tasks are asked for.
struct Asked : KeysOptions {
    std::string key;
    std::string text;
    bool json = false;
};

void declareCommon(CommandSyntax& task, Asked& asked) {
    addKeyboardOptions(task, asked.keyboard);
    addFolderOptions(task, asked.folder);
}

void declareList(CommandSyntax& task, Asked& asked) {
    task.flag("--json", asked.json, "Print as JSON");
    declareCommon(task, asked);
}

void declareKey(CommandSyntax& task, Asked& asked) {
    task.option("KEY", asked.key, "The key: what it prints, such as esc or \"left control\", or its code")
        .type("")
        .required();
}

void declareLabel(CommandSyntax& task, Asked& asked) {
    declareKey(task, asked);
    task.option("TEXT", asked.text, "What the key is to be called").type("").required();
    declareCommon(task, asked);
}

void declareUnlabel(CommandSyntax& task, Asked& asked) {
    declareKey(task, asked);
    declareCommon(task, asked);
}

}  // namespace

void keysCommand(CommandLine& line, const Environment& environment) {
    Asked asked;
    line.describe("Show what the keys of your keyboard print, and call them what you like",
                  "tappora keys label esc quit");
    declareList(line, asked);
    line.task(
        "list", "List the board's keys, what they print, and your own words (the default)",
        "tappora keys list --json", [&](auto& task) { declareList(task, asked); },
        [&] { listKeys(asked, environment, asked.json); });
    line.task(
        "label", "Call a key by a word of your own", "tappora keys label 53 quit",
        [&](auto& task) { declareLabel(task, asked); },
        [&] { labelKey(asked.key, asked.text, asked, environment); });
    line.task(
        "unlabel", "Call a key by what it prints again", "tappora keys unlabel esc",
        [&](auto& task) { declareUnlabel(task, asked); },
        [&] { labelKey(asked.key, "", asked, environment); });
    line.task(
        "learn", "Press each key that is asked for, so that it is shown by what it really types",
        "tappora keys learn", [&](auto& task) { declareCommon(task, asked); },
        [&] { learnKeys(asked, environment); });
    line.task(
        "forget", "Forget what was learned of the board's keys", "tappora keys forget",
        [&](auto& task) { declareCommon(task, asked); }, [&] { forgetKeys(asked, environment); });
    line.perform([&] { listKeys(asked, environment, asked.json); });
}

}  // namespace tappora

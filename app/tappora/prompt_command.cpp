#include <filesystem>
#include <optional>
#include <string>

#include "app/common/assistant/assistant.h"
#include "app/common/command_line/command_line.h"
#include "app/common/harmless_text.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/tappora/commands.h"

namespace tappora {
namespace {

struct Asked {
    FolderOptions folder;
    KeyboardOptions keyboard;
    std::optional<std::string> language;
    bool inApp = false;
    bool introduced = false;
};

void declare(CommandLine& line, Asked& asked) {
    line.describe("Print a prompt for a language model of your own choice that can read your data folder",
                  "tappora prompt --language French");
    line.flag("--in-app", asked.inApp,
              "Print the prompt for a model that has the assistant's tools instead of the folder");
    line.flag("--introduced", asked.introduced, "Begin with an introduction and the format of the files");
    line.option("--language", asked.language, "The language to answer in; English when not given")
        .type("LANGUAGE");
    addKeyboardOptions(line, asked.keyboard);
    addFolderOptions(line, asked.folder);
}

std::string promptText(const Asked& asked, const tapcore::Store& store, const Environment& environment) {
    const tapcore::Day day = today(asked.folder, environment, environment.calendar);
    const auto keyboard = AssistantKeyboard::of(asked.keyboard, environment, store);
    const auto prompt = assistantPrompt(store, keyboard, asked.language);
    if (asked.inApp) return prompt.inApp(day);
    return prompt.text(std::filesystem::absolute(store.root).lexically_normal().string());
}

std::string introduction(tapcore::FileFormat format) {
    return std::string(tapcore::AgentPrompt::opening()) + "\n" + tapcore::AgentPrompt::formatSection(format) +
           "\n";
}

}  // namespace

void promptCommand(CommandLine& line, const Environment& environment) {
    Asked asked;
    declare(line, asked);
    line.parse();
    requireUtf8("--language", asked.language);
    const tapcore::Store store = openStore(asked.folder, environment);
    const std::string text =
        (asked.introduced ? introduction(store.format) : "") + promptText(asked, store, environment) + "\n";
    print(environment.onTerminal ? harmless(text) : text);
}

}  // namespace tappora

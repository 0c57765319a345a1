#include <filesystem>
#include <optional>

#include "app/common/assistant/assistant.h"
#include "app/common/command_line/command_line.h"
#include "app/common/harmless_text.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/tappora/commands.h"

namespace tappora {

void promptCommand(CommandLine& line, const Environment& environment) {
    FolderOptions folder;
    KeyboardOptions keyboard;
    std::optional<std::string> language;
    bool inApp = false;
    bool introduced = false;
    line.describe("Print a prompt for a language model of your own choice that can read your data folder",
                  "tappora prompt --language French");
    line.flag("--in-app", inApp,
              "Print the prompt for a model that has the assistant's tools instead of the folder");
    line.flag("--introduced", introduced, "Begin with an introduction and the format of the files");
    line.option("--language", language, "The language to answer in; English when not given").type("LANGUAGE");
    addKeyboardOptions(line, keyboard);
    addFolderOptions(line, folder);
    line.parse();
    requireUtf8("--language", language);

    const tapcore::Store store = openStore(folder, environment);
    const auto prompt = assistantPrompt(store, AssistantKeyboard::of(keyboard, environment, store), language);
    const tapcore::Day day = today(folder, environment, environment.calendar);
    std::string text;
    if (introduced)
        text = std::string(tapcore::AgentPrompt::opening()) + "\n" +
               tapcore::AgentPrompt::formatSection(store.format) + "\n";
    text += (inApp ? prompt.inApp(day)
                   : prompt.text(std::filesystem::absolute(store.root).lexically_normal().string())) +
            "\n";
    print(environment.onTerminal ? harmless(text) : text);
}

}  // namespace tappora

#include "app/common/assistant/assistant.h"

#include "app/common/harmless_text.h"
#include "app/common/program.h"
#include "core/foundation/utf8.h"

namespace tappora {

void requireUtf8(std::string_view argument, const std::optional<std::string>& text) {
    if (text && tapcore::firstInvalidUtf8(*text) != std::string_view::npos)
        throw UsageError(std::string(argument) + ": " + harmlessLine(*text) + ": not UTF-8");
}

AssistantKeyboard AssistantKeyboard::of(const KeyboardOptions& options, const Environment& environment,
                                        const tapcore::Store& store) {
    const Keyboards keyboards(environment, store);
    return {keyboards.chosenBoard(options), keyboards.chosenLayout(options)};
}

tapcore::AssistantTools assistantTools(const tapcore::Store& store, const AssistantKeyboard& keyboard,
                                       const tapcore::Day& today) {
    return tapcore::AssistantTools::over(store, today, keyboard.layout.names());
}

tapcore::AgentPrompt assistantPrompt(const tapcore::Store& store, const AssistantKeyboard& keyboard,
                                     const std::optional<std::string>& language) {
    return {.format = store.format,
            .board = keyboard.board,
            .layout = tapcore::Layout{.id = keyboard.layout.id, .name = keyboard.layout.name},
            .legends = keyboard.layout.names(),
            .language = language.value_or(""),
            .macs = tapcore::AssistantTools::over(store, {}, {}).macs};
}

}  // namespace tappora

#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "app/common/folder/data_folder.h"
#include "app/common/keyboard/keyboard.h"
#include "app/common/system/environment.h"
#include "core/assistant/agent_prompt.h"
#include "core/assistant/assistant_tools.h"
#include "core/files/store.h"
#include "core/keyboard/board.h"

namespace tappora {

/// UsageError, naming the argument, when the text given for it is not UTF-8 and so cannot be sent to a model.
void requireUtf8(std::string_view argument, const std::optional<std::string>& text);

/// What the assistant is told about the user's keyboard. Looking for it reads the settings and the last day
/// counted.
struct AssistantKeyboard {
    tapcore::Board board;
    LegendSet layout;

    static AssistantKeyboard of(const KeyboardOptions& options, const Environment& environment,
                                const tapcore::Store& store);
};

/// The assistant's tools over a store.
tapcore::AssistantTools assistantTools(const tapcore::Store& store, const AssistantKeyboard& keyboard,
                                       const tapcore::Day& today);

/// The prompt about a store. The language to answer in is English without one.
tapcore::AgentPrompt assistantPrompt(const tapcore::Store& store, const AssistantKeyboard& keyboard,
                                     const std::optional<std::string>& language);

}  // namespace tappora

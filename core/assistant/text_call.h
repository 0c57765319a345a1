#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/assistant/assistant_tools.h"

namespace tapcore {

/// A tool call that a small model wrote as text, since its server did not make a call of it.
struct TextCall {
    std::string name;
    std::string arguments;  ///< a JSON object
};

/// The first call in a reply's text, wherever it is: a JSON object with a name and its arguments, else a call
/// of one of the tools in the words of a program (see `codeCall`).
std::optional<TextCall> textCall(std::string_view text, const std::vector<AssistantTools::Spec>& tools);

/// Whether a text holds such a call, or what begins as one and is cut short or broken: it is no answer to
/// show.
bool holdsCall(std::string_view text, const std::vector<AssistantTools::Spec>& tools);

/// `text` without the thoughts that a model wrote between <think> and </think>, trimmed.
std::string withoutThoughts(std::string_view text);

}  // namespace tapcore

#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace tapcore {

/// A tool call that a small model wrote as text, since its server did not make a call of it.
struct TextCall {
    std::string name;
    std::string arguments;  ///< a JSON object
};

/// The call that a reply's text is, when it is nothing else: a JSON object with a name and its arguments,
/// bare, in a code fence or between the marks that models know.
std::optional<TextCall> textCall(std::string_view text);

/// Whether a text starts as such a call does, whole or not: it is no answer to show.
bool looksLikeCall(std::string_view text);

/// `text` without the thoughts that a model wrote between <think> and </think>, trimmed.
std::string withoutThoughts(std::string_view text);

}  // namespace tapcore

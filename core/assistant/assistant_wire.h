#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/assistant/assistant_tools.h"
#include "core/assistant/chat_file.h"
#include "core/foundation/raw_values.h"

namespace tapcore {

/// The language-model providers' interfaces as JSON: what a request holds and what a reply says. Nothing is
/// sent here.
namespace AssistantWire {

enum class Provider {
    apple,   ///< the system's own model; only on its own platform
    claude,  ///< the Messages interface
    openai,  ///< the Chat Completions interface
    local,   ///< a server on this machine with that interface; nothing is charged
};
inline constexpr RawValues<Provider, 4> providers{{"apple", "claude", "openai", "local"}};

struct Model {
    std::string_view id;
    std::string_view name;
};
inline constexpr std::array<Model, 3> claudeModels = {{{"claude-opus-5", "Claude Opus 5"},
                                                       {"claude-sonnet-5", "Claude Sonnet 5"},
                                                       {"claude-haiku-4-5", "Claude Haiku 4.5"}}};

inline constexpr std::string_view anthropicVersion = "2023-06-01";
inline constexpr std::string_view fallbackBeta = "server-side-fallback-2026-07-01";
/// The model that takes a question over when the one asked declines it.
inline constexpr std::string_view fallbackModel = "claude-sonnet-5";

// The interfaces' base addresses.
inline constexpr std::string_view anthropicURL = "https://api.anthropic.com/v1";
inline constexpr std::string_view openaiURL = "https://api.openai.com/v1";
/// Where servers of this machine are looked for, in this order.
inline constexpr std::array<std::string_view, 3> localAddresses = {
    "http://localhost:11434/v1", "http://localhost:1234/v1", "http://localhost:8080/v1"};

inline constexpr int maxSteps = 8;            ///< requests for one question
inline constexpr int maxAnswerTokens = 4000;  ///< of one reply

using Headers = std::map<std::string, std::string>;

/// A request's headers, the model's own among them.
Headers claudeHeaders(std::string_view key, std::string_view model);

/// A request to the Messages interface. `effort` and `fallbacks` say whether the model takes them.
nlohmann::json claudeBody(std::string_view model, std::string_view system,
                          const std::vector<AssistantTools::Spec>& tools, const nlohmann::json& messages,
                          bool effort, bool fallbacks);

/// A request to a Chat Completions interface, `system` as its first message unless it is empty.
nlohmann::json chatBody(std::string_view model, std::string_view system,
                        const std::vector<AssistantTools::Spec>& tools, const nlohmann::json& messages);

/// A tool's parameters as a JSON Schema.
nlohmann::json schema(const AssistantTools::Spec& tool);

/// Earlier turns as messages, one for each.
nlohmann::json history(const std::vector<ChatFile::Turn>& turns);

/// The messages of `history` as every interface takes them: the user's first, without empty ones, and those
/// of one side that follow each other as one.
nlohmann::json sendable(const nlohmann::json& messages);

/// The arguments of a tool call as a JSON object: given as one, as text that holds one, or as empty text.
/// Nothing for anything else.
std::optional<nlohmann::json> argumentsObject(const nlohmann::json& arguments);

/// The string arguments of a tool call; others are dropped, and arguments that cannot be used give an empty
/// map.
std::map<std::string, std::string> arguments(const nlohmann::json& arguments);

/// The ids in a provider's model listing, in its order; empty when it is not a listing.
std::vector<std::string> modelIDs(const nlohmann::json& listing);

/// The ids in OpenAI's model listing of models that can hold this conversation, newest first.
std::vector<std::string> openaiChatModels(const nlohmann::json& listing);

/// The list without repetitions: the first of equal texts stays.
std::vector<std::string> unique(const std::vector<std::string>& list);

/// The text-table key that explains an HTTP failure; nothing where the provider's own message does.
std::optional<std::string_view> problemKey(int status);

/// The provider's own message in the body of a failure ("error.message", or "error" as text); nothing without
/// one.
std::optional<std::string> problemMessage(const nlohmann::json& body);

bool usesFallbacks(std::string_view model);
bool takesEffort(std::string_view model);

}  // namespace AssistantWire

}  // namespace tapcore

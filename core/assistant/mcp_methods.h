#pragma once

#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "core/assistant/agent_prompt.h"
#include "core/assistant/assistant_tools.h"
#include "core/assistant/mcp_message.h"

namespace tapcore::mcp {

/// What the server hands out. Asked for again at each request, so that days and machines are current.
struct Offer {
    std::function<AssistantTools()> tools;  ///< with a store
    std::function<AgentPrompt()> prompt;
    std::function<Day()> today;
    std::string version;  ///< of the program
};

/// Whom a result is for, and for how long it holds, as r2026_07_28 asks to be told.
enum class Caching {
    none,      ///< not told
    builtIn,   ///< the same for everyone
    personal,  ///< of this data folder; stale at once
};

struct Result {
    nlohmann::json value;
    Caching caching = Caching::none;
};

/// Does what a method of tools, prompts or resources asks for; nothing for any other method.
/// Throws Error.
std::optional<Result> call(const Offer& offer, Revision revision, std::string_view method,
                           const nlohmann::json& params);

/// The server's name, title and version.
nlohmann::json serverInfo(const Offer& offer, Revision revision);

// The methods by subject.
Result listTools(const Offer& offer, Revision revision);
Result callTool(const Offer& offer, Revision revision, const nlohmann::json& params);
Result listPrompts(Revision revision);
Result getPrompt(const Offer& offer, const nlohmann::json& params);
Result listResources(const Offer& offer, Revision revision, const nlohmann::json& params);
Result listTemplates(Revision revision);
Result readResource(const Offer& offer, Revision revision, const nlohmann::json& params);

/// A string that a method cannot do without. Throws Error naming it.
std::string stringParam(const nlohmann::json& params, std::string_view name);

/// Refuses the cursor of a list that has no further pages.
void refuseCursor(const nlohmann::json& params);

}  // namespace tapcore::mcp

#include "core/assistant/mcp_methods.h"

namespace tapcore::mcp {

using nlohmann::json;

std::optional<Result> call(const Offer& offer, Revision revision, std::string_view method,
                           const json& params) {
    if (method == "tools/call") return callTool(offer, revision, params);
    if (method == "prompts/get") return getPrompt(offer, params);
    if (method == "resources/list") return listResources(offer, revision, params);
    if (method == "resources/read") return readResource(offer, revision, params);
    if (method != "tools/list" && method != "prompts/list" && method != "resources/templates/list")
        return std::nullopt;
    refuseCursor(params);
    if (method == "tools/list") return listTools(offer, revision);
    return method == "prompts/list" ? listPrompts(revision) : listTemplates(revision);
}

json serverInfo(const Offer& offer, Revision revision) {
    json info = {{"name", "tappora"}, {"version", offer.version}};
    if (revision >= Revision::r2025_06_18) info["title"] = "Tappora";
    return info;
}

std::string stringParam(const json& params, std::string_view name) {
    const auto found = params.find(name);
    if (found == params.end() || !found->is_string())
        throw Error(invalidParams, "Invalid params: " + std::string(name) + " is missing or not a string");
    return found->get<std::string>();
}

void refuseCursor(const json& params) {
    if (params.contains("cursor")) throw Error(invalidParams, "Invalid params: no such cursor");
}

}  // namespace tapcore::mcp

#include "core/assistant/claude_reply.h"

#include <algorithm>

#include "core/assistant/tool_text.h"
#include "core/foundation/json_fields.h"
#include "core/foundation/text_pieces.h"

namespace tapcore::AssistantWire {

using nlohmann::json;

std::string ClaudeReply::text() const {
    std::vector<std::string> parts;
    for (const json& block : content)
        if (block["type"] == "text") parts.push_back(JsonValue(block).member("text").string());
    return joined(parts, "\n\n");
}

std::vector<json> ClaudeReply::toolUses() const {
    std::vector<json> uses;
    std::copy_if(content.begin(), content.end(), std::back_inserter(uses),
                 [](const json& block) { return block["type"] == "tool_use"; });
    return uses;
}

ClaudeReply claudeReply(const json& reply) {
    const JsonValue document(reply);
    ClaudeReply result;
    const JsonValue content = document.member("content");
    for (std::size_t i = 0; i < content.size(); ++i) {
        const JsonValue block = content.element(i);
        const std::string type = block.member("type").string();
        if (type == "text") block.member("text").string();
        result.content.push_back(block.raw());
    }
    if (const auto stop = document.optionalMember("stop_reason")) result.stop = stop->string();
    return result;
}

json claudeTurn(const ClaudeReply& reply) { return {{"role", "assistant"}, {"content", reply.content}}; }

}  // namespace tapcore::AssistantWire

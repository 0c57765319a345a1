#include "core/assistant/dialogue.h"

#include <nlohmann/json.hpp>

namespace tapcore {

AssistantTools::Output run(const ToolCall& call, const AssistantTools& tools) {
    if (call.isReadable) return tools.run(call.name, call.arguments);
    return {"The arguments are not a JSON object. Call " + call.name +
                " again with one, such as {\"folder\": \"days\"}.",
            true,
            {}};
}

}  // namespace tapcore

#include "core/assistant/assistant_budget.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "core/foundation/json_fields.h"

namespace tapcore {
namespace {

/// A number of tokens; 0 for anything else. A server's nonsense is bounded, so that sums of it stay in range.
std::int64_t tokens(const nlohmann::json& usage, std::string_view name) {
    constexpr std::int64_t most = std::int64_t{1} << 40;
    try {
        const auto count = JsonValue(usage).optionalMember(name);
        return count ? std::clamp(count->integer(), std::int64_t{0}, most) : 0;
    } catch (const JsonError&) {
        return 0;
    }
}

}  // namespace

void AssistantBudget::addClaude(const nlohmann::json& usage) {
    input += tokens(usage, "input_tokens") + tokens(usage, "cache_creation_input_tokens") +
             tokens(usage, "cache_read_input_tokens") / 10;
    output += tokens(usage, "output_tokens");
}

void AssistantBudget::addChat(const nlohmann::json& usage) {
    input += tokens(usage, "prompt_tokens");
    output += tokens(usage, "completion_tokens");
}

}  // namespace tapcore

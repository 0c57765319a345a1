#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <string_view>

namespace tapcore {

/// What one question may use of a provider that charges by the token.
struct AssistantBudget {
    std::int64_t input = 0;   ///< tokens sent so far
    std::int64_t output = 0;  ///< tokens written so far
    bool paid = false;        ///< false: nothing is charged, so nothing is ever spent

    static constexpr std::int64_t inputTokens = 150000;
    static constexpr std::int64_t outputTokens = 12000;

    /// What the model is told once the budget is spent.
    static constexpr std::string_view finalWord =
        R"(The question's budget is spent: answer now from what you have read, in a few lines, and call no more tools. Say what you could not look at, and that a narrower question (a day, a week, a month) can.)";

    /// Adds the "usage" of a reply; what is missing in it counts as 0. Tokens that Claude read from its cache
    /// count a tenth.
    void addClaude(const nlohmann::json& usage);
    void addChat(const nlohmann::json& usage);

    bool spent() const { return paid && (input >= inputTokens || output >= outputTokens); }

    bool operator==(const AssistantBudget&) const = default;
};

}  // namespace tapcore

#pragma once

#include <nlohmann/json.hpp>  // whole: a record of blocks cannot be declared without
#include <optional>
#include <string>
#include <vector>

namespace tapcore::AssistantWire {

/// A reply of the Messages interface. Blocks that mean nothing here are kept, since they are handed back.
struct ClaudeReply {
    std::vector<nlohmann::json> content;  ///< blocks
    std::optional<std::string> stop;      ///< why it ends

    /// All its text blocks, joined by an empty line.
    std::string text() const;
    /// Its tool calls.
    std::vector<nlohmann::json> toolUses() const;

    bool operator==(const ClaudeReply&) const = default;
};

/// Throws JsonError saying where for what is no reply.
ClaudeReply claudeReply(const nlohmann::json& reply);

/// The message by which a reply becomes a part of the conversation, its blocks unchanged.
nlohmann::json claudeTurn(const ClaudeReply& reply);

}  // namespace tapcore::AssistantWire

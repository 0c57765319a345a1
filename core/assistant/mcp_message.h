#pragma once

#include <nlohmann/json.hpp>  // whole: a message is JSON in every part
#include <optional>
#include <string>
#include <string_view>

#include "core/foundation/text_error.h"

namespace tapcore::mcp {

/// The revisions of the Model Context Protocol that are served, oldest first. All but the last open with a
/// handshake that holds for the connection; from the last, every request is independent.
enum class Revision { r2024_11_05, r2025_03_26, r2025_06_18, r2025_11_25, r2026_07_28 };

/// A refusal, as JSON-RPC tells it.
class Error : public TextError {
  public:
    Error(int ofCode, const std::string& message, nlohmann::json withData = nullptr)
        : TextError(message), code(ofCode), data(std::move(withData)) {}

    int code;
    nlohmann::json data;  ///< null when there are no data
};

// Codes of JSON-RPC 2.0, then of the protocol.
inline constexpr int notJSON = -32700;
inline constexpr int invalidRequest = -32600;
inline constexpr int methodNotFound = -32601;
inline constexpr int invalidParams = -32602;
inline constexpr int internalError = -32603;
inline constexpr int resourceNotFound = -32002;  ///< before r2026_07_28
inline constexpr int unsupportedVersion = -32022;

/// A request or a notification.
struct Message {
    nlohmann::json id;  ///< null for a notification: it is never answered
    std::string method;
    nlohmann::json params;  ///< as given; an object in a request whose shape is right

    bool isNotification() const { return id.is_null(); }
};

/// The message that a JSON value is; nothing for what asks for no answer: a client's own answer, or a
/// notification out of shape. Throws Error for a request out of shape; `id` then holds its id, when that can
/// be read.
std::optional<Message> messageOf(const nlohmann::json& value, nlohmann::json& id);

/// An answer as a JSON-RPC object. The id is left out when it is null.
nlohmann::json resultAnswer(const nlohmann::json& id, nlohmann::json result);
nlohmann::json errorAnswer(const nlohmann::json& id, const Error& error);

}  // namespace tapcore::mcp

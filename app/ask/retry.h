#pragma once

#include <chrono>
#include <optional>

#include "app/ask/http_client.h"
#include "core/assistant/assistant_wire.h"
#include "core/foundation/calendar.h"

namespace tappora {

/// The longest that a server may make us wait before a request is sent once more.
inline constexpr std::chrono::milliseconds longestWait = std::chrono::seconds(60);

/// How long to wait before sending a refused request once more: as the server says, else one second. Nothing
/// when that is of no use: for other failures than 429 and 5xx, when the server says so or asks for more
/// patience than `longestWait`, and when money is at an end.
std::optional<std::chrono::milliseconds> retryDelay(tapcore::AssistantWire::Provider provider,
                                                    const HttpReply& reply, tapcore::Instant now);

}  // namespace tappora

#include "app/ask/retry.h"

#include <algorithm>

#include "core/foundation/integers.h"

namespace tappora {
namespace {

using std::chrono::milliseconds;
using tapcore::AssistantWire::Provider;

std::optional<std::string> header(const HttpReply& reply, const char* name) {
    const auto found = reply.headers.find(name);
    return found == reply.headers.end() ? std::nullopt : std::optional(found->second);
}

/// A count of some unit, bounded so that it stays a sensible duration.
template <class Unit>
std::optional<milliseconds> duration(const std::optional<std::string>& text) {
    const auto count = text ? tapcore::parseInteger(*text) : std::nullopt;
    if (!count || *count < 0) return std::nullopt;
    return Unit(std::min<std::int64_t>(*count, 1000000));
}

/// The wait that a server asks for, in any of its forms.
std::optional<milliseconds> askedDelay(const HttpReply& reply, tapcore::Instant now) {
    if (const auto delay = duration<milliseconds>(header(reply, "retry-after-ms"))) return delay;
    const auto text = header(reply, "retry-after");
    if (const auto delay = duration<std::chrono::seconds>(text)) return delay;
    const auto date = text ? httpDate(*text) : std::nullopt;
    if (!date) return std::nullopt;
    return std::max(milliseconds(0), std::chrono::duration_cast<milliseconds>(*date - now));
}

bool isOutOfMoney(const HttpReply& reply) {
    return reply.status == 429 && reply.body.find("\"insufficient_quota\"") != std::string::npos;
}

}  // namespace

std::optional<milliseconds> retryDelay(Provider provider, const HttpReply& reply, tapcore::Instant now) {
    const auto asked = askedDelay(reply, now);
    const auto advice = header(reply, "x-should-retry");
    const bool isPassing = reply.status == 429 || (reply.status >= 500 && reply.status <= 599);
    const bool isMonthlyCap = provider == Provider::claude && reply.status == 429 && !asked;
    const bool isWorthIt = advice ? *advice == "true" : isPassing && !isMonthlyCap && !isOutOfMoney(reply);
    const milliseconds delay = asked.value_or(std::chrono::seconds(1));
    if (!isWorthIt || delay > longestWait) return std::nullopt;
    return delay;
}

}  // namespace tappora

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <string_view>

#include "core/assistant/mcp_server.h"

namespace {

using namespace tapcore;

mcp::Offer offer() {
    const Store store("/nonexistent/tappora", FileFormat::org);
    return {.tools = [=] { return AssistantTools::over(store, Day(2026, 9, 20), {}); },
            .prompt = [] { return AgentPrompt{.format = FileFormat::org}; },
            .today = [] { return Day(2026, 9, 20); },
            .version = "1"};
}

/// Every answer is one line of JSON-RPC.
void check(const std::string& line) {
    const auto answer = nlohmann::json::parse(line, nullptr, false);
    const auto isAnswer = [](const nlohmann::json& one) {
        return one.is_object() && one.value("jsonrpc", "") == "2.0";
    };
    const bool isSound =
        answer.is_array() ? std::all_of(answer.begin(), answer.end(), isAnswer) : isAnswer(answer);
    if (!isSound || line.find('\n') != std::string::npos) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    mcp::Server server(offer());
    for (std::string_view rest(reinterpret_cast<const char*>(data), size); !rest.empty();) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        server.receive(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    while (!server.isIdle())
        for (const std::string& line : server.answerNext()) check(line);
    for (const std::string& line : server.end()) check(line);
    return 0;
}

#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "tests/app/ask/loopback_server.h"
#include "tests/app/ask/running_program.h"
#include "tests/support/pseudo_terminal.h"

namespace tappora {

using nlohmann::json;
using std::chrono::milliseconds;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;

inline json claude(const char* content, std::string_view stop = "end_turn", int input = 10) {
    return {{"content", json::parse(content)},
            {"stop_reason", stop},
            {"usage", {{"input_tokens", input}, {"output_tokens", 2}}}};
}
inline json chat(json message, std::string_view finish = "stop") {
    return {{"choices", {{{"message", std::move(message)}, {"finish_reason", finish}}}},
            {"usage", {{"prompt_tokens", 10}, {"completion_tokens", 2}}}};
}
inline const char* const listDays = R"([{"type":"thinking","thinking":"","signature":"s"},
    {"type":"tool_use","id":"t1","name":"read_file","input":{"path":"days/2026-09-20.md"}},
    {"type":"tool_use","id":"t2","name":"list_files","input":{"folder":"weeks\n\u009b"}}])";

/// A question put by the program itself, to a server of the test's own.
class Ask : public testing::Test {
  protected:
    Ask() {
        data.put("days/2026-09-20.md", "## Keys\n| 9 | 0 | 90 |\n");
        data.put(".keys/config.json", R"({"format":"markdown"})");
        environment = {{"HOME", data.path().string()},
                       {"XDG_CONFIG_HOME", (home / "config").string()},
                       {"XDG_RUNTIME_DIR", home.path().string()},
                       {"TAPPORA_RESOURCES", RESOURCES},
                       {"TZ", "UTC"},
                       {"LC_ALL", "C.UTF-8"},
                       {"ANTHROPIC_API_KEY", "secret-claude"},
                       {"OPENAI_API_KEY", "secret-openai"},
                       {"http_proxy", "http://127.0.0.1:9/"}};
    }

    int ask(std::vector<std::string> arguments, std::string_view input = "") {
        begin(std::move(arguments), input);
        const int status = program->wait();
        EXPECT_THAT(program->output() + program->errors(), Not(HasSubstr("secret-")));
        return status;
    }
    void begin(std::vector<std::string> arguments, std::string_view input = "") {
        for (const char* more : {"--folder", data.path().c_str(), "--today", "2026-09-20"})
            arguments.push_back(more);
        program.emplace(std::string(PROGRAMS) + "/tappora-ask", arguments, environment, input);
    }
    int askClaude(std::vector<LoopbackServer::Reply> replies, std::vector<std::string> more = {}) {
        server.emplace(std::move(replies));
        for (const char* option : {"How was today?", "--provider", "claude", "--url", server->url().c_str()})
            more.push_back(option);
        return ask(std::move(more));
    }
    PseudoTerminal onTerminal(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {PROGRAMS "/tappora-ask", "--folder", data.path().string(),
                                             "--today", "2026-09-20"});
        environment["TERM"] = "xterm-256color";
        return PseudoTerminal(arguments, environment, 24, 80);
    }
    json sent(std::size_t index) { return json::parse(server->requests().at(index).body); }

    tapcore::TemporaryFolder data;
    tapcore::TemporaryFolder home;
    std::map<std::string, std::string> environment;
    std::optional<LoopbackServer> server;
    std::optional<RunningProgram> program;
};

}  // namespace tappora

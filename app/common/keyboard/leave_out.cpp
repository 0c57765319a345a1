#include "app/common/keyboard/leave_out.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

#include "app/common/command_line/command_line.h"
#include "app/common/program.h"
#include "core/foundation/characters.h"
#include "core/foundation/integers.h"

namespace tappora {
namespace {

std::vector<std::string> namesIn(const std::string& text) {
    if (text == ",") return {text};
    std::vector<std::string> names;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find(',', start), text.size());
        names.emplace_back(tapcore::trimmedWhiteSpace(text.substr(start, end - start)));
        start = end + 1;
    }
    return names;
}

std::set<tapcore::KeyCode> codesNamed(const std::string& name, const tapcore::Legends& legends) {
    constexpr std::string_view prefix = "key ";
    if (name.starts_with(prefix)) {
        const auto code = tapcore::parseKeyCode(std::string_view(name).substr(prefix.size()));
        if (code) return {*code};
    }
    std::set<tapcore::KeyCode> codes;
    for (const auto& [code, legend] : legends)
        if (!legend.empty() && tapcore::lowercased(legend[0]) == tapcore::lowercased(name))
            codes.insert(code);
    return codes;
}

}  // namespace

void addLeaveOutOption(CommandSyntax& command, std::vector<std::string>& keys) {
    command
        .option("--leave-out", keys,
                "Keys to leave out, by name: space,delete or \"key 49\"; may be repeated")
        .type("KEYS")
        .takesOneEachTime();
}

std::set<tapcore::KeyCode> leftOutCodes(const std::vector<std::string>& keys,
                                        const tapcore::Legends& legends) {
    std::set<tapcore::KeyCode> all;
    for (const std::string& text : keys)
        for (const std::string& name : namesIn(text)) {
            const auto codes = codesNamed(name, legends);
            if (codes.empty())
                throw UsageError(
                    fmt::format("--leave-out: no such key: {}; see tappora layouts show LAYOUT", name));
            all.insert(codes.begin(), codes.end());
        }
    return all;
}

}  // namespace tappora

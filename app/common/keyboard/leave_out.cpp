#include "app/common/keyboard/leave_out.h"

#include <fmt/format.h>

#include <string_view>

#include "app/common/command_line/command_line.h"
#include "app/common/keyboard/key_names.h"
#include "app/common/program.h"
#include "core/foundation/characters.h"
#include "core/foundation/text_pieces.h"

namespace tappora {
namespace {

/// The names in a list such as "space, a"; "," alone is the key of that name.
std::vector<std::string> namesIn(std::string_view list) {
    if (list == ",") return {","};
    std::vector<std::string> names;
    do names.emplace_back(tapcore::trimmedWhiteSpace(tapcore::takePiece(list, ',')));
    while (!list.empty());
    return names;
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
                                        const tapcore::LegendSet& layout) {
    std::set<tapcore::KeyCode> all;
    for (const std::string& text : keys)
        for (const std::string& name : namesIn(text)) {
            const auto codes = keysNamed(name, layout);
            if (codes.empty())
                throw UsageError(
                    fmt::format("--leave-out: no such key: {}; see tappora layouts show LAYOUT", name));
            all.insert(codes.begin(), codes.end());
        }
    return all;
}

}  // namespace tappora

#include "app/common/command_line/confirm.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cstdio>
#include <iostream>
#include <string>

#include "app/common/program.h"
#include "core/foundation/characters.h"

namespace tappora {

bool agrees(std::string_view question) {
    print(fmt::format("{} [y/N] ", question));
    std::fflush(stdout);
    std::string answer;
    std::getline(std::cin, answer);
    const std::string word = tapcore::lowercased(tapcore::trimmedWhiteSpace(answer));
    return word == "y" || word == "yes";
}

void confirm(std::string_view what, bool yes) {
    if (yes) return;
    print(fmt::format("{}\n", what));
    if (::isatty(STDIN_FILENO) == 0) throw Failure("nothing done", "not a terminal: use --yes");
    if (!agrees("Go ahead?")) throw Failure("nothing done", "the answer was no");
}

}  // namespace tappora

#include "app/common/program.h"

#include <fmt/format.h>

#include <cstdio>

#include "app/common/harmless_text.h"

namespace tappora {

std::string version() { return "tappora " TAPPORA_VERSION; }

std::string noSuch(std::string_view kind, std::string_view value, const std::vector<std::string>& known) {
    std::string list = known.front();
    for (std::size_t i = 1; i < known.size(); ++i) list += (i + 1 == known.size() ? " or " : ", ") + known[i];
    return fmt::format("no such {}: {}; use {}", kind, value, list);
}

void print(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stdout); }

std::string complaint(std::string_view text) { return "tappora: " + harmless(text); }

void complain(std::string_view text) {
    std::fflush(stdout);
    std::fprintf(stderr, "%s\n", complaint(text).c_str());
}

}  // namespace tappora

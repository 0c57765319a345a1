#include "app/common/program.h"

#include <fmt/format.h>

#include <cstdio>

#include "app/common/harmless_text.h"
#include "core/foundation/alternatives.h"

namespace tappora {

std::string version() { return "tappora " TAPPORA_VERSION; }

std::string alternatives(const std::vector<std::string>& names) { return tapcore::alternatives(names); }

std::string noSuch(std::string_view kind, std::string_view value, const std::vector<std::string>& known) {
    return fmt::format("no such {}: {}; use {}", kind, value, alternatives(known));
}

void print(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stdout); }

std::string complaint(std::string_view text) { return "tappora: " + harmless(text); }

void complain(std::string_view text) {
    std::fflush(stdout);
    std::fprintf(stderr, "%s\n", complaint(text).c_str());
}

}  // namespace tappora

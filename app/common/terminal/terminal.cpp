#include "app/common/terminal/terminal.h"

#include <fmt/format.h>

#include "app/common/system/environment.h"
#include "core/foundation/characters.h"
#include "core/foundation/integers.h"

namespace tappora {
namespace {

/// The name of the locale whose encoding text has: the first of the three that is set to something.
std::string localeName(const Environment& environment) {
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"})
        if (const auto value = environment.variable(name); value && !value->empty()) return *value;
    return "C";
}

bool isUtf8(const std::string& locale) {
    const std::string name = tapcore::lowercased(locale);
    return name.find("utf-8") != std::string::npos || name.find("utf8") != std::string::npos;
}

ColourDepth depthOf(const Environment& environment) {
    const std::string term = environment.variable("TERM").value_or("");
    const std::string colours = environment.variable("COLORTERM").value_or("");
    if (colours == "truecolor" || colours == "24bit" || term.ends_with("-direct")) return ColourDepth::full;
    return term.find("256color") != std::string::npos ? ColourDepth::indexed : ColourDepth::basic;
}

std::size_t widthOf(const Environment& environment) {
    constexpr std::int64_t widest = 1000;
    constexpr std::size_t usual = 80;
    const auto set = tapcore::parseInteger(environment.variable("COLUMNS").value_or(""));
    if (set && *set > 0 && *set <= widest) return static_cast<std::size_t>(*set);
    return environment.columns > 0 ? environment.columns : usual;
}

}  // namespace

Terminal Terminal::of(const Environment& environment) {
    const auto refusal = environment.variable("NO_COLOR");
    const bool refused = (refusal && !refusal->empty()) || environment.variable("TERM") == "dumb";
    return {.colours = environment.onTerminal && !refused,
            .unicode = isUtf8(localeName(environment)),
            .depth = depthOf(environment),
            .width = widthOf(environment)};
}

std::string Terminal::styled(std::string_view text, std::string_view code) const {
    return colours && !text.empty() ? fmt::format("\033[{}m{}\033[0m", code, text) : std::string(text);
}

}  // namespace tappora

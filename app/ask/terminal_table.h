#pragma once

#include <span>
#include <string>
#include <string_view>

#include "app/common/terminal/terminal.h"

namespace tappora {

/// The lines of a Markdown table as a terminal shows them: columns of one width, the header bold above a
/// rule. Lines without a rule after the first are no table, and stay as they are.
std::string terminalTable(std::span<const std::string_view> lines, const Terminal& terminal);

}  // namespace tappora

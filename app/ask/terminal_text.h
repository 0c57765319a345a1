#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "app/common/terminal.h"

namespace tappora {

/// Markdown as a terminal shows it: bold text and headings bold, list marks as bullets, links followed by
/// their address, lines broken between words at `columns`. Tables and code stay as they are.
std::string terminalText(std::string_view markdown, const Terminal& terminal, std::size_t columns);

}  // namespace tappora

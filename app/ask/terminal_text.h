#pragma once

#include <string>
#include <string_view>

#include "app/common/terminal/terminal.h"

namespace tappora {

/// Markdown as a terminal shows it: bold text and headings bold, emphasised text in italics, list marks as
/// bullets, links followed by their address, lines broken between words at its width, tables with their
/// columns aligned. Code stays as it is.
std::string terminalText(std::string_view markdown, const Terminal& terminal);

}  // namespace tappora

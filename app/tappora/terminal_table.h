#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "app/common/report/report_tables.h"
#include "app/common/terminal/terminal.h"

namespace tappora {

/// A table as lines of a terminal, its header first and faint: names to the left, numbers below each other.
/// A name that leaves no room for its numbers has lines of its own. With an amount for each row, a bar of it
/// follows, where there is room.
std::vector<std::string> linesOf(const ReportTable& table, const Terminal& terminal,
                                 const std::vector<std::int64_t>& amounts = {});

/// Two blocks of lines beside each other, or below each other where the terminal is too narrow.
std::vector<std::string> beside(const std::vector<std::string>& left, const std::vector<std::string>& right,
                                const Terminal& terminal);

/// A text in lines, none wider than the terminal unless a word is; the first begins with `start`, and all
/// others are indented as far.
std::vector<std::string> wrapped(const std::string& text, const std::string& start, std::size_t width);

/// The lines as one text.
std::string joined(const std::vector<std::string>& lines);

}  // namespace tappora

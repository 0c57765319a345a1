#pragma once

#include <string>
#include <string_view>

#include "app/common/report/report_tables.h"
#include "core/words/words.h"

namespace tappora {

// The small pieces of HTML that a report's page is made of. Texts are escaped here, and nowhere else.

/// Text for an element or an attribute.
std::string escaped(std::string_view text);

using PageCell = ReportCell;
using PageTable = ReportTable;

/// The table, which its caption tells screen readers of.
std::string html(const PageTable& table);

/// The table behind a button that says "As a table".
std::string behindButton(const PageTable& table, const tapcore::Words& words);

/// A section with its heading; nothing for an empty one.
std::string section(std::string_view id, std::string_view heading, std::string_view content);

/// The page's style sheet: the heat colours are given, and all else is fixed.
std::string styleSheet(std::string_view heatColours);

}  // namespace tappora

#pragma once

#include <string>

#include "core/keyboard/map_color.h"
#include "core/reports/report.h"
#include "core/words/words.h"

namespace tappora {

/// How a page is to look.
struct PageStyle {
    tapcore::MapColor color;    ///< of heat
    std::string locale = "en";  ///< of dates and of the first day of the week
};

/// A report as one HTML file: light and dark, for narrow and wide windows and for paper. It needs no script,
/// fetches nothing and says so by its Content-Security-Policy. Each picture has a table behind it, and names
/// for screen readers.
std::string reportPage(const tapcore::Report& report, const tapcore::ReportKeyboard& keyboard,
                       const tapcore::Words& words, const PageStyle& style);

}  // namespace tappora

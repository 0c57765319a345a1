#pragma once

#include <string>

#include "app/common/report/report_bars.h"
#include "core/keyboard/map_color.h"
#include "core/reports/report.h"
#include "core/words/words.h"

namespace tappora {

// The pictures of a report's page, as SVG within HTML. Their colours come from the page's style sheet, so
// that one picture serves light and dark.

/// The rules of the style sheet that give each heat step its colour, and the text on it black or white,
/// whichever is easier to read.
std::string heatStyles(tapcore::MapColor color);

/// A bar for each day or month; one without data is an empty outline.
std::string barsPicture(const ReportBars& bars, const tapcore::Words& words);

/// A square for each day of a year, a column for each week.
std::string yearPicture(const ReportBars& bars, const tapcore::Words& words, const std::string& locale);

/// A square for each hour of each weekday.
std::string hoursPicture(const tapcore::Report& report, const tapcore::Words& words,
                         const std::string& locale);

/// The board with its keys, each of which says its count when it is pointed at or has the focus.
std::string keyboardPicture(const tapcore::Report& report, const tapcore::ReportKeyboard& keyboard,
                            const tapcore::Words& words);

/// Two hands, whose fingers are as warm as their share of the presses.
std::string handsPicture(const tapcore::Report& report, const tapcore::Words& words);

}  // namespace tappora

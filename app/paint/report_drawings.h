#pragma once

#include <string>

#include "app/common/report/report_bars.h"
#include "core/keyboard/map_color.h"
#include "core/reports/report.h"
#include "core/words/words.h"
#include "drawing/node.h"

namespace tappora {

// The pictures of a report on paper, each from its 0 and as wide as it is given.

struct Drawn {
    drawing::Node node;
    double height = 0;
};

/// What all of them are made of.
struct ReportDrawings {
    const tapcore::Report& report;
    const tapcore::ReportKeyboard& keyboard;
    const tapcore::Words& words;
    const std::string& locale;
    tapcore::MapColor color;
    double width = 0;

    /// A bar for each day or month; one without data is an empty outline.
    Drawn barsOf(const ReportBars& bars) const;
    /// A square for each day, a column for each week.
    Drawn calendarOf(const ReportBars& bars) const;
    /// A square for each hour of each weekday.
    Drawn hours() const;
    /// The board as a heat map.
    Drawn keys() const;
    /// Two hands, whose fingers are as warm as their share of the presses.
    Drawn hands() const;
};

}  // namespace tappora

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/reports/report.h"

namespace tappora {

/// The stretches of time that a report lists one by one: days or, of more than a year, months.
struct ReportBars {
    enum class Kind {
        days,      ///< so few that each has a bar
        calendar,  ///< days up to a year
        months,    ///< by their first day; a month in which nobody counted is a gap
    };

    struct Bar {
        tapcore::Report::DayLine line;
        std::string name;   ///< "Sep 20, 2026", "September 2026"
        std::string label;  ///< below its bar; may be empty
    };

    Kind kind = Kind::days;
    std::vector<Bar> bars;

    /// Of its sections ("report.section.days"), which one lists it.
    std::string_view section() const;
    /// Whether so few that amounts have room above their bars.
    bool showsAmounts() const { return bars.size() <= 7; }

    static ReportBars of(const tapcore::Report& report, const std::string& locale);
};

}  // namespace tappora

#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "core/reports/report_period.h"
#include "core/reports/typing_days.h"

namespace tapcore {

/// Another period that a report was asked to be compared with.
struct ComparedPeriod {
    ReportPeriod period;
    Stretch stretch;                        ///< as much of it as is over of the report's own
    std::optional<StretchFigures> figures;  ///< nothing where too few days have typing
};

/// A figure of two periods.
struct ComparedFigure {
    std::string_view name;  ///< in English
    std::string_view word;  ///< the key of its text
    double now = 0;
    double then = 0;
    int decimals = 0;
    bool isShare = false;  ///< in per cent, and so compared by their difference

    /// By how much it changed: per cent of `then`, or the difference of shares. Nothing when there was
    /// none then.
    std::optional<double> change() const;
};

std::vector<ComparedFigure> comparedFigures(const StretchFigures& now, const StretchFigures& then);

}  // namespace tapcore

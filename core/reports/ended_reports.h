#pragma once

#include <string_view>
#include <vector>

#include "core/counting/day.h"
#include "core/files/store.h"
#include "core/reports/report_period.h"

namespace tapcore {

/// The last periods that were over before `today`, of the kinds that the setting "reports.save" names:
/// "week", "month" or "both"; of anything else none.
std::vector<ReportPeriod> endedPeriods(std::string_view kinds, const Day& today);

/// Whether a document of that name is among the saved reports, in either format.
bool isSaved(const Store& store, const ReportPeriod& period);

/// Whether all that a report of the period reads can be added up: a report of what cannot would end the
/// program.
bool canBeReported(const Store& store, const ReportPeriod& period);

}  // namespace tapcore

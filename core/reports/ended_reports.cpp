#include "core/reports/ended_reports.h"

#include "core/files/count_sum.h"
#include "core/files/folder_names.h"
#include "core/practice/practice_sums.h"
#include "core/reports/report_document.h"

namespace tapcore {

std::vector<ReportPeriod> endedPeriods(std::string_view kinds, const Day& today) {
    std::vector<ReportPeriod> periods;
    for (const auto kind : {ReportPeriod::Kind::week, ReportPeriod::Kind::month})
        if (kinds == "both" || kinds == ReportPeriod::kinds.of(kind))
            periods.push_back(ReportPeriod::containing(kind, today).previous());
    return periods;
}

bool isSaved(const Store& store, const ReportPeriod& period) {
    return !reportsAt(store).copies(reportsFolder, period.name()).empty();
}

bool canBeReported(const Store& store, const ReportPeriod& period) {
    constexpr std::int64_t furthestBack = 400;  // a year, and the week that a period of then began in
    const Day first = daysLater(period.first, -furthestBack);
    CountSum sum;
    for (const Day& day : store.days())
        if (first <= day && day <= period.last) store.addNumbers(sum, day);
    return sum.fits() && !unaddablePractice(store);
}

}  // namespace tapcore

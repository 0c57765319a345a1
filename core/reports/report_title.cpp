#include "core/reports/report_title.h"

#include "core/foundation/civil_date.h"
#include "core/foundation/date_text.h"

namespace tapcore {
namespace {

CivilDate dateOf(const Day& day) { return {day.year, day.month, day.day}; }

}  // namespace

std::string titleOf(const ReportPeriod& period, const Words& words, std::string_view locale) {
    const CivilDate first = dateOf(period.first);
    switch (period.kind) {
        case ReportPeriod::Kind::week:
            return words.text("report.week", {{"n", std::to_string(period.weekNumber())},
                                              {"dates", dateRangeText(first, dateOf(period.last), locale)}});
        case ReportPeriod::Kind::month:
            return DateWriter(DateWriter::Form::month, locale)(first);
        case ReportPeriod::Kind::year:
            return period.name();
        case ReportPeriod::Kind::span:
            return dateRangeText(first, dateOf(period.last), locale);
        default:
            return DateWriter(DateWriter::Form::full, locale)(first);
    }
}

}  // namespace tapcore

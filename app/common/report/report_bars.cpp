#include "app/common/report/report_bars.h"

#include <cstdint>
#include <utility>

#include "core/foundation/date_text.h"
#include "core/foundation/weekday_names.h"

namespace tappora {
namespace {

using Line = tapcore::Report::DayLine;
using tapcore::DateWriter;

ReportBars::Kind kindFor(std::size_t days) {
    constexpr std::size_t mostBars = 62;
    if (days <= mostBars) return ReportBars::Kind::days;
    return days <= tapcore::mostDayLines ? ReportBars::Kind::calendar : ReportBars::Kind::months;
}

/// Of every so many years the first month is labelled, so that labels do not meet.
std::string yearLabel(const tapcore::Day& month, const Line& first, std::size_t months) {
    constexpr std::size_t labelsWithRoom = 14;
    const auto every = static_cast<std::int64_t>(1 + months / (12 * labelsWithRoom));
    const bool isLabelled = month.month == 1 && (month.year - first.day.year) % every == 0;
    return isLabelled ? std::to_string(month.year) : "";
}

}  // namespace

std::string_view ReportBars::section() const {
    return kind == Kind::days ? "days" : kind == Kind::calendar ? "year" : "months";
}

ReportBars ReportBars::of(const tapcore::Report& report, const std::string& locale) {
    ReportBars result{kindFor(report.days.size()), {}};
    const bool byMonth = result.kind == Kind::months;
    const DateWriter name(byMonth ? DateWriter::Form::month : DateWriter::Form::usual, locale);
    const std::vector<Line> lines = byMonth ? tapcore::monthLines(report.days) : report.days;
    const auto weekdays = tapcore::weekdayNames(locale);
    for (const Line& line : lines) {
        const tapcore::Day& day = line.day;
        std::string label = byMonth            ? yearLabel(day, lines.front(), lines.size())
                            : lines.size() > 7 ? std::to_string(day.day)
                                               : weekdays[day.weekday()];
        result.bars.push_back({line, name({day.year, day.month, day.day}), std::move(label)});
    }
    return result;
}

}  // namespace tappora

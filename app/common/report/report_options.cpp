#include "app/common/report/report_options.h"

#include <fmt/format.h>

#include "app/common/command_line/command_line.h"
#include "app/common/folder/date_style.h"
#include "app/common/folder/language.h"
#include "app/common/keyboard/board_counts.h"
#include "app/common/keyboard/key_remaps.h"
#include "app/common/program.h"
#include "app/common/report/report_keyboard.h"
#include "core/reports/report_title.h"

namespace tappora {
namespace {

using tapcore::Day;
using tapcore::ReportPeriod;

ReportPeriod::Kind kindOf(const std::string& word) {
    const auto kind = ReportPeriod::kinds.find(word);
    if (kind && *kind != ReportPeriod::Kind::span) return *kind;
    throw UsageError("PERIOD: " + noSuch("period", word, {"day", "week", "month", "year"}));
}

ReportPeriod periodOf(const ReportOptions& options, const Day& today, const tapcore::Calendar& calendar) {
    const bool isSpan = options.span.from || options.span.to;
    if (isSpan && (options.kind || options.of))
        throw UsageError("--from and --to name the days themselves: leave out PERIOD and --of");
    if (isSpan) {
        const Period span = tappora::periodOf(options.span, today, calendar);
        return ReportPeriod::span(span.first, span.last);
    }
    const Day day = options.of ? parseDay("--of", *options.of) : today;
    return ReportPeriod::containing(kindOf(options.kind.value_or("week")), day);
}

/// The period of the same kind, or of as many days, that a day is in, or begins.
ReportPeriod likeWith(const ReportPeriod& period, const Day& day) {
    if (period.kind != ReportPeriod::Kind::span) return ReportPeriod::containing(period.kind, day);
    return ReportPeriod::span(day, tapcore::daysLater(day, period.days() - 1));
}

ReportPeriod otherPeriod(const std::string& word, const ReportPeriod& period) {
    if (word == "previous") return period.previous();
    if (word == "year") return period.yearBefore();
    const auto day = Day::parse(word);
    if (!day) throw UsageError("--compare: " + word + ": write previous, year or a day, YYYY-MM-DD");
    return likeWith(period, *day);
}

std::optional<ReportPeriod> comparedOf(const ReportOptions& options, const ReportPeriod& period,
                                       const Day& today) {
    if (!options.compare) return std::nullopt;
    const ReportPeriod other = otherPeriod(*options.compare, period);
    const char* const wrong = other == period       ? " is in the period itself"
                              : other.meets(period) ? ": that period and the report's own have days in common"
                              : other.first > today ? ": that period has not begun"
                                                    : nullptr;
    if (wrong) throw UsageError("--compare: " + *options.compare + wrong);
    return other;
}

}  // namespace

void addReportOptions(CommandLine& line, ReportOptions& options) {
    line.describe("Print what a period of typing says: this week so far, or the period that is named",
                  "tappora report month --of 2026-09-01 --save");
    line.option("PERIOD", options.kind, "What to report on; the week when not given")
        .type("day|week|month|year");
    Option of = line.option("--of", options.of, "A day in the period; today when not given");
    of.type("YYYY-MM-DD");
    addPeriodOptions(line, options.span);
    line.option("--compare", options.compare,
                "Compare the figures with those of another period: the previous one, that of a year ago, or "
                "the one that a day is in")
        .type("previous|year|DATE");
    line.flag("--save", options.saves, "Write the report into the data folder, too");
    line.option("-o,--output", options.output,
                "Write the report as a page for the browser, an HTML file, or for printing, a PDF file")
        .type("FILE");
    line.flag("--open", options.opens, "Open the page in the browser");
    addColorOption(line, options.color);
    line.flag("--json", options.json, "Print the report as JSON").excludes("--output").excludes("--open");
    addKeyboardOptions(line, options.keyboard);
    addFolderOptions(line, options.folder);
}

void sayNothingCounted(const AskedReport& asked, const ReportOptions& options) {
    const ReportPeriod& period = asked.question.period;
    const bool isToCome = period.first > asked.question.today;
    const std::string unwritten = options.output  ? *options.output
                                  : options.opens ? "--open"
                                  : options.saves ? "--save"
                                                  : "";
    if (!unwritten.empty())
        throw Failure(unwritten, isToCome
                                     ? "nothing is written: the period has not begun"
                                     : fmt::format("nothing is written: nothing was counted from {} to {}",
                                                   period.first.description(), period.last.description()));
    print(asked.words.text(isToCome ? "report.to_come" : "report.nothing",
                           {{"name", titleOf(period, asked.words, asked.locale)}}) +
          "\n");
}

AskedReport askedReport(const ReportOptions& options, const Environment& environment) {
    const tapcore::Calendar& calendar = environment.calendar;
    const Day day = today(options.folder, environment, calendar);
    const ReportPeriod period = periodOf(options, day, calendar);
    const auto compared = comparedOf(options, period, day);
    const tapcore::MapColor color = chosenColor(options.color, environment);
    tapcore::Store store = openShown(options.folder, environment);
    tapcore::Words words = chosenWords(environment);
    std::string locale = withDateStyle(dateLocale(words, environment), environment);
    tapcore::ReportQuestion question{
        .period = period,
        .today = day,
        .hoursPassed = static_cast<std::int64_t>(hoursPassed(day, environment, calendar)),
        .keyboard = reportKeyboard(options.keyboard, store, environment),
        .comparedWith = compared};
    return {std::move(store), std::move(question), std::move(words), std::move(locale), color};
}

}  // namespace tappora

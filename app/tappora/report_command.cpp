#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "app/common/command_line/command_line.h"
#include "app/common/command_line/records_json.h"
#include "app/common/folder/data_folder.h"
#include "app/common/folder/language.h"
#include "app/common/folder/period.h"
#include "app/common/folder/tell.h"
#include "app/common/keyboard/board_counts.h"
#include "app/common/keyboard/keyboard.h"
#include "app/common/program.h"
#include "app/common/report/report_keyboard.h"
#include "app/common/system/environment.h"
#include "app/common/terminal/long_work.h"
#include "app/common/terminal/terminal.h"
#include "app/tappora/commands.h"
#include "app/tappora/report_json.h"
#include "app/tappora/report_page.h"
#include "app/tappora/report_text.h"
#include "core/foundation/file_io.h"
#include "core/reports/report.h"
#include "core/reports/report_document.h"

namespace tappora {
namespace {

using tapcore::Report;
using tapcore::ReportPeriod;

struct ReportOptions {
    FolderOptions folder;
    KeyboardOptions keyboard;
    PeriodOptions span;
    std::optional<std::string> kind;
    std::optional<std::string> of;
    std::optional<std::string> output;
    std::optional<std::string> color;
    bool saves = false;
    bool json = false;
};

void declare(CommandLine& line, ReportOptions& options) {
    line.describe("Print what a period of typing says: this week so far, or the period that is named",
                  "tappora report month --of 2026-09-01 --save");
    line.option("PERIOD", options.kind, "day, week, month or year; the week when not given").type("PERIOD");
    Option of = line.option("--of", options.of, "A day in the period; today when not given");
    of.type("YYYY-MM-DD");
    addPeriodOptions(line, options.span);
    line.flag("--save", options.saves, "Write the report into the data folder, too");
    line.option("-o,--output", options.output, "Write the report as a page for the browser: an HTML file")
        .type("FILE");
    addColorOption(line, options.color);
    line.flag("--json", options.json, "Print the report as JSON").excludes("--output");
    addKeyboardOptions(line, options.keyboard);
    addFolderOptions(line, options.folder);
}

ReportPeriod::Kind kindOf(const std::string& word) {
    const auto kind = ReportPeriod::kinds.find(word);
    if (kind && *kind != ReportPeriod::Kind::span) return *kind;
    throw UsageError("PERIOD: " + noSuch("period", word, {"day", "week", "month", "year"}));
}

ReportPeriod periodOf(const ReportOptions& options, const tapcore::Day& today,
                      const tapcore::Calendar& calendar) {
    const bool isSpan = options.span.from || options.span.to;
    if (isSpan && (options.kind || options.of))
        throw UsageError("--from and --to name the days themselves: leave out PERIOD and --of");
    if (isSpan) {
        const Period span = tappora::periodOf(options.span, today, calendar);
        return ReportPeriod::span(span.first, span.last);
    }
    const tapcore::Day day = options.of ? parseDay("--of", *options.of) : today;
    return ReportPeriod::containing(kindOf(options.kind.value_or("week")), day);
}

Report read(const tapcore::Store& store, const tapcore::ReportQuestion& question) {
    LongWork work("reading");
    tapcore::FileProblems problems;
    bool isDone = true;
    const auto shown = work.progress();
    const Report report = reportOf(store, question, &problems, [&](std::size_t done, std::size_t total) {
        return isDone = shown(done, total);
    });
    work.requireDone(isDone);
    requireAnswer(problems, report.isEmpty());
    return report;
}

std::string said(tapcore::SavedReport saved) {
    switch (saved) {
        case tapcore::SavedReport::written:
            return "saved";
        case tapcore::SavedReport::unchanged:
            return "saved before, and nothing has changed since";
        case tapcore::SavedReport::reworded:
            return "saved again: the figures are the same";
        default:
            return "saved again: figures have changed since it was saved";
    }
}

void save(const Report& report, const tapcore::ReportKeyboard& keyboard, const ReportOptions& options,
          const Environment& environment) {
    const LockedStore locked(options.folder, environment);
    const std::string name = report.period.name();
    const std::string document = documentOf(report, keyboard, chosenWords(environment), locked.store.format);
    const tapcore::SavedReport saved = saveReport(locked.store, name, document);
    complain(fmt::format("reports/{}.{}: {}", name, locked.store.format.fileExtension(), said(saved)));
}

/// The locale of dates: the user's own where it is one of the language, which then says more of it ("de_AT").
std::string localeOf(const tapcore::Words& words, const Environment& environment) {
    const std::string own = messageLocale(environment);
    const std::string locale = own.substr(0, own.find_first_of(".@"));
    return locale.starts_with(words.language()) ? locale : words.language();
}

void writePage(const Report& report, const ReportOptions& options, const tapcore::ReportKeyboard& keyboard,
               const tapcore::Words& words, const Environment& environment) {
    const std::string& file = *options.output;
    if (!file.ends_with(".html"))
        throw UsageError("--output: " + file + ": not a page: its name must end in .html");
    const PageStyle style{chosenColor(options.color, environment), localeOf(words, environment)};
    complainOf(tapcore::writeFile(file, reportPage(report, keyboard, words, style)));
}

}  // namespace

void reportCommand(CommandLine& line, const Environment& environment) {
    ReportOptions options;
    declare(line, options);
    line.parse();

    const tapcore::Calendar& calendar = environment.calendar;
    const tapcore::Day day = today(options.folder, environment, calendar);
    const ReportPeriod period = periodOf(options, day, calendar);
    const tapcore::Store store = openStore(options.folder, environment);
    const tapcore::ReportQuestion question{
        .period = period,
        .today = day,
        .hoursPassed = static_cast<std::int64_t>(hoursPassed(day, environment, calendar)),
        .keyboard = reportKeyboard(options.keyboard, store, environment)};
    const Report report = read(store, question);
    const tapcore::Words words = chosenWords(environment);
    if (report.isEmpty() && !options.json) {
        print(fmt::format("{}: nothing was counted from {} to {}\n", period.name(),
                          period.first.description(), period.last.description()));
        return;
    }
    if (options.saves) save(report, question.keyboard, options, environment);
    if (options.output) return writePage(report, options, question.keyboard, words, environment);
    print(options.json ? jsonText(toJson(report, question.keyboard, words))
                       : reportText(report, question.keyboard, words, Terminal::of(environment)));
}

}  // namespace tappora

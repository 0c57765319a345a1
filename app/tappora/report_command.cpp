#include <fmt/format.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "app/common/command_line/command_line.h"
#include "app/common/command_line/companion.h"
#include "app/common/command_line/records_json.h"
#include "app/common/folder/data_folder.h"
#include "app/common/folder/language.h"
#include "app/common/folder/settings.h"
#include "app/common/folder/tell.h"
#include "app/common/keyboard/key_remaps.h"
#include "app/common/program.h"
#include "app/common/report/report_options.h"
#include "app/common/system/environment.h"
#include "app/common/terminal/long_work.h"
#include "app/common/terminal/terminal.h"
#include "app/tappora/commands.h"
#include "app/tappora/page_opening.h"
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

Report read(const tapcore::Store& store, const tapcore::ReportQuestion& question) {
    LongWork work("reading");
    tapcore::FileProblems problems;
    bool isDone = true;
    const auto shown = work.progress();
    const Report report = reportOf(store, question, &problems, [&](std::size_t done, std::size_t total) {
        return isDone = shown(done, total);
    });
    work.requireDone(isDone, "stopped");
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

/// In a file, keys are under the codes that were pressed, also when they are shown as others.
void save(const Report& shown, const tapcore::ReportQuestion& question, const ReportOptions& options,
          const Environment& environment) {
    const bool isRemapped = !Settings::read(environment).text(remapsKey).value_or("").empty();
    const Report report = isRemapped ? read(openStore(options.folder, environment), question) : shown;
    const LockedStore locked(options.folder, environment);
    const std::string name = report.period.name();
    const std::string document =
        documentOf(report, question.keyboard, chosenWords(environment), locked.store.format);
    const tapcore::SavedReport saved = saveReport(locked.store, name, document);
    complain(fmt::format("reports/{}.{}: {}", name, locked.store.format.fileExtension(), said(saved)));
}

void writePage(const Report& report, const AskedReport& asked, const ReportOptions& options,
               const Environment& environment) {
    const std::filesystem::path file = options.output
                                           ? std::filesystem::path(*options.output)
                                           : placeForPage(asked.question.period.name(), environment);
    const PageStyle style{asked.color, asked.locale};
    complainOf(tapcore::writeFile(file, reportPage(report, asked.question.keyboard, asked.words, style)));
    if (options.opens) openOnDesktop(file);
}

bool isPaper(const ReportOptions& options) {
    const bool is = options.output && options.output->ends_with(".pdf");
    if (is && options.opens)
        throw UsageError("--open: opens the page for the browser: end --output in .html");
    return is;
}

bool isPage(const ReportOptions& options) {
    if (!options.output) return options.opens;
    if (options.output->ends_with(".html")) return true;
    throw UsageError("--output: " + *options.output + ": its name must end in .html or .pdf");
}

}  // namespace

void reportCommand(CommandLine& line, const Environment& environment) {
    ReportOptions options;
    addReportOptions(line, options);
    line.parse();
    if (isPaper(options)) becomePainter("report", line.arguments());
    if (options.opens) requireDesktop(environment);

    const bool asPage = isPage(options);
    const AskedReport asked = askedReport(options, environment);
    const tapcore::ReportQuestion& question = asked.question;
    const Report report = read(asked.store, question);
    if (report.isEmpty() && (options.saves || !options.json)) return sayNothingCounted(asked, options);
    if (options.saves) save(report, question, options, environment);
    if (asPage) return writePage(report, asked, options, environment);
    print(options.json
              ? jsonText(toJson(report, question.keyboard, asked.words, asked.locale))
              : reportText(report, question.keyboard, {asked.words, asked.locale, DateStyle::of(environment)},
                           Terminal::of(environment)));
}

}  // namespace tappora

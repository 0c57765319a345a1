
#include <nlohmann/json.hpp>

#include "app/common/command_line/command_line.h"
#include "app/common/command_line/records_json.h"
#include "app/common/folder/data_folder.h"
#include "app/common/folder/period.h"
#include "app/common/keyboard/key_remaps.h"
#include "app/common/keyboard/keyboard.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/common/terminal/terminal.h"
#include "app/tappora/commands.h"
#include "app/tappora/period_text.h"

namespace tappora {
namespace {

std::string summaryText(const Period& period, const tapcore::Summary& summary,
                        const tapcore::Legends& legends, const Environment& environment) {
    const Terminal terminal = Terminal::of(environment);
    return terminal.bold(description(period)) + "\n\n" + figures(summary) +
           hoursSection(summary, DateStyle::of(environment), terminal) + daysSection(summary, terminal) +
           topSection(summary, legends, 10, terminal);
}

}  // namespace

void summaryCommand(CommandLine& line, const Environment& environment) {
    FolderOptions folder;
    PeriodOptions dates;
    bool json = false;
    line.describe(
        "Print the figures of a period, or of the week ending today, with the files of all machines added up",
        "tappora summary --from 2026-09-01 --to 2026-09-30");
    addPeriodOptions(line, dates);
    line.flag("--json", json, "Print the record as JSON");
    addFolderOptions(line, folder);
    line.parse();

    const tapcore::Calendar& calendar = environment.calendar;
    const Period period = periodOf(dates, today(folder, environment, calendar), calendar);
    tapcore::FileProblems problems;
    const tapcore::Store store = openShown(folder, environment);
    const tapcore::Summary summary = store.summary(period.days, period.last, calendar, &problems);
    requireAnswer(problems, summary.isEmpty());
    if (json) return print(jsonText(toJson(summary)));
    const tapcore::Legends legends = Keyboards(environment, store).chosenLayout({}).names();
    print(summaryText(period, summary, legends, environment));
}

}  // namespace tappora

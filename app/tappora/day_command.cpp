#include <nlohmann/json.hpp>

#include "app/common/command_line/command_line.h"
#include "app/common/command_line/records_json.h"
#include "app/common/folder/data_folder.h"
#include "app/common/harmless_text.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/tappora/commands.h"
#include "core/foundation/fatal.h"

namespace tappora {
void dayCommand(CommandLine& line, const Environment& environment) {
    FolderOptions folder;
    std::optional<std::string> date;
    std::optional<std::string> format;
    bool json = false;
    line.describe("Print one day as its table file, with the files of all machines and both formats added up",
                  "tappora day 2026-09-20 --format markdown");
    line.option("DATE", date, "The day; today when not given").type("YYYY-MM-DD");
    line.option("--format", format, "org or markdown; the data folder's own when not given").type("FORMAT");
    line.flag("--json", json, "Print the record as JSON");
    addFolderOptions(line, folder);
    line.parse();

    const tapcore::Day day =
        date ? parseDay("DATE", *date) : today(folder, environment, environment.calendar);
    const tapcore::Store store = openStore(folder, environment);
    const auto written = format ? parseFormat("--format", *format) : store.format;
    const std::string place = store.url(day).replace_extension().string();
    const tapcore::FatalContext context("printing", place);
    tapcore::FileProblems problems;
    const tapcore::DayFile file = store.read(day, &problems);
    requireAnswer(problems, file == tapcore::DayFile());
    if (json) return print(jsonText(toJson(file, day)));
    const std::string text = file.text(written, day);
    print(environment.onTerminal ? harmless(text) : text);
}

}  // namespace tappora

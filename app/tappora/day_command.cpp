#include <fmt/format.h>

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "app/common/command_line/command_line.h"
#include "app/common/command_line/records_json.h"
#include "app/common/folder/data_folder.h"
#include "app/common/harmless_text.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/tappora/commands.h"
#include "core/foundation/fatal.h"

namespace tappora {
namespace {

struct Asked {
    FolderOptions folder;
    std::optional<std::string> date;
    std::optional<std::string> format;
    bool json = false;
};

void declare(CommandLine& line, Asked& asked) {
    line.describe("Print one day as its table file, with the files of all machines and both formats added up",
                  "tappora day 2026-09-20 --format markdown");
    line.option("DATE", asked.date, "The day; today when not given").type("YYYY-MM-DD");
    line.option("--format", asked.format,
                fmt::format("{}; the data folder's own when not given",
                            alternatives(tapcore::FileFormat::words.names())))
        .type("FORMAT");
    line.flag("--json", asked.json, "Print the record as JSON");
    addFolderOptions(line, asked.folder);
}

}  // namespace

void dayCommand(CommandLine& line, const Environment& environment) {
    Asked asked;
    declare(line, asked);
    line.parse();

    const tapcore::Day day =
        asked.date ? parseDay("DATE", *asked.date) : today(asked.folder, environment, environment.calendar);
    const tapcore::Store store = openStore(asked.folder, environment);
    const auto written = asked.format ? parseFormat("--format", *asked.format) : store.format;
    const std::string place = store.url(day).replace_extension().string();
    const tapcore::FatalContext context("printing", place);
    tapcore::FileProblems problems;
    const tapcore::DayFile file = store.read(day, &problems);
    requireAnswer(problems, file == tapcore::DayFile());
    if (asked.json) return print(jsonText(toJson(file, day)));
    const std::string text = file.text(written, day);
    print(environment.onTerminal ? harmless(text) : text);
}

}  // namespace tappora

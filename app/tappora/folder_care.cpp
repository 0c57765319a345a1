// Care for what the data folder holds: formats, months, checks.

#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "app/common/command_line/records_json.h"
#include "app/common/folder/data_folder.h"
#include "app/common/harmless_text.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/common/terminal/long_work.h"
#include "app/tappora/folder_tasks.h"
#include "core/files/counted_names.h"
#include "core/files/folder_check.h"
#include "core/files/folder_config.h"
#include "core/files/folder_names.h"
#include "core/files/row_reader.h"
#include "core/files/store.h"
#include "core/foundation/folder_listing.h"
#include "core/foundation/integers.h"
#include "core/practice/practice_day.h"

namespace tappora {

using tapcore::Store;

void requireListable(const Store& store) {
    for (const std::string_view folder : Store::ownFolders)
        if (const auto why = tapcore::whyUnlisted(store.base() / folder))
            throw Failure((store.base() / folder).string(), why.message());
}

void convertFolder(const std::optional<std::string>& format, const FolderOptions& options,
                   const Environment& environment) {
    const auto chosen = format ? std::optional(parseFormat("--to", *format)) : std::nullopt;
    LockedStore locked(options, environment);
    requireListable(locked.store);
    if (chosen) {
        auto config = tapcore::FolderConfig::readToChange(locked.store.root);
        config.format = locked.store.format = *chosen;
        locked.store.warnUnlessSafe(config.write(locked.store.root));
    }
    LongWork work("converting");
    work.requireDone(locked.store.convert(work.progress()));
    requireListable(locked.store);
    if (locked.store.needsConversion())
        throw Failure(locked.store.base().string(),
                      "some files are still in the other format; running it again does the rest");
    print(fmt::format("{}: every file is in {}\n", harmlessLine(locked.store.base().string()),
                      locked.store.format.title()));
}

void refreshMonths(const FolderOptions& options, const Environment& environment) {
    const tapcore::Day now = today(options, environment, environment.calendar);
    const LockedStore locked(options, environment);
    LongWork work("summing months");
    tapcore::FileProblems problems;
    work.requireDone(locked.store.refreshRollups(now, work.progress(), &problems));
    const std::size_t months = countedNames(locked.store.own(), tapcore::monthsFolder, &problems).size();
    complainOf(problems);
    if (!problems.empty()) throw Failure(locked.store.base().string(), "not all months are up to date");
    print(fmt::format("{}: {} up to date\n", harmlessLine(locked.store.base().string()),
                      tapcore::counted(months, "month", "months")));
}

void checkDataFolder(const FolderOptions& options, const Environment& environment, bool json) {
    const Store store = openStore(options, environment);
    const tapcore::Day now = today(options, environment, environment.calendar);
    const tapcore::FileProblems problems =
        tapcore::checkFolder(store, now, tapcore::skippedRowsOf<tapcore::PracticeDay>);
    if (json) {
        nlohmann::json findings = nlohmann::json::array();
        for (const auto& problem : problems)
            findings.push_back(
                {{"path", problem.path.string()}, {"line", problem.line}, {"why", problem.why}});
        print(jsonText(findings));
    } else {
        for (const auto& problem : problems) print(described(problem) + "\n");
    }
    if (!problems.empty())
        throw Failure(store.root.string(), tapcore::counted(problems.size(), "finding", "findings"));
}

}  // namespace tappora

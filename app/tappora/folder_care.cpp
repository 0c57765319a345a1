// Care for what the data folder holds: formats, months, checks, forgetting and clearing.

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <nlohmann/json.hpp>
#include <span>

#include "app/common/command_line/confirm.h"
#include "app/common/command_line/records_json.h"
#include "app/common/folder/data_folder.h"
#include "app/common/folder/folder_lock.h"
#include "app/common/harmless_text.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/tappora/folder_tasks.h"
#include "app/tappora/long_work.h"
#include "core/files/counted_names.h"
#include "core/files/data_listing.h"
#include "core/files/day_file.h"
#include "core/files/file_copies.h"
#include "core/files/folder_check.h"
#include "core/files/folder_config.h"
#include "core/files/folder_names.h"
#include "core/files/row_reader.h"
#include "core/files/store.h"
#include "core/foundation/fatal.h"
#include "core/foundation/file_io.h"
#include "core/foundation/folder_listing.h"
#include "core/foundation/integers.h"
#include "core/practice/practice_day.h"

namespace tappora {
namespace {

using tapcore::Day;
using tapcore::Store;

/// This machine's own files alone.
Store own(const Store& store) { return {store.base(), store.format}; }

/// "1,204,331 keystrokes", or that there are too many to tell: what destroys is the way to repair that.
std::string keystrokes(const Store& store, const std::vector<Day>& days) {
    tapcore::CountSum counts;
    for (const Day& day : days)
        addNumbers(counts, readCopies(store.root / tapcore::daysFolder, day.description(), store.format));
    if (!counts.fits()) return std::string(tapcore::tooLarge);
    std::int64_t sum = 0;
    for (const Day& day : days) sum += store.read(day).tally.total();
    return tapcore::grouped(sum) + " keystrokes";
}

/// "214 days of counts with 1,204,331 keystrokes, 2026-01-03 to 2026-09-20, and 9 months".
std::string countsOf(const Store& store) {
    const auto days = store.days();
    const std::string months =
        tapcore::counted(countedNames(store, tapcore::monthsFolder).size(), "month", "months");
    if (days.empty()) return "no days of counts and " + months;
    return fmt::format("{} of counts with {}, {} to {}, and {}", tapcore::counted(days.size(), "day", "days"),
                       keystrokes(store, days), days.front().description(), days.back().description(),
                       months);
}

/// What else goes when days are rewritten without what is to be forgotten: ", 2 lines that are not
/// counts, 1 file kept as it was"; "" when there is nothing.
std::string besides(const Store& store) {
    std::size_t lines = 0;
    std::size_t kept = 0;
    const std::filesystem::path folder = store.root / tapcore::daysFolder;
    for (const tapcore::ListedFile& file : tapcore::dataFiles(folder)) {
        if (tapcore::isKeptDayName(file.name)) ++kept;
        if (!tapcore::isDayName(file.name)) continue;
        const std::filesystem::path path = folder / file.fileName();
        const std::string text = tapcore::readStoredFile(path).text;
        const tapcore::FatalContext context("reading", path.native());
        lines += tapcore::leftOutOf<tapcore::DayFile>(text).size();
    }
    std::string what;
    if (lines > 0)
        what += ", " + tapcore::counted(lines, "line that is not a count", "lines that are not counts");
    if (kept > 0) what += ", " + tapcore::counted(kept, "file", "files") + " kept as it was";
    return what;
}

std::string practiceOf(const Store& store) {
    return tapcore::counted(countedNames(store, tapcore::practiceFolder).size(), "day", "days") +
           " of practice";
}

/// "WHAT will be removed from FOLDER", and what stays.
std::string warning(const Store& store, std::string_view what) {
    const bool hasOthers = !store.macs().empty();
    const bool hasTop = store.mac && !tapcore::dataFiles(store.root / tapcore::daysFolder).empty();
    std::string stays;
    if (hasOthers) stays += " What other machines wrote stays.";
    if (hasTop) stays += " The files at the top of the folder, from before it was shared, stay.";
    return fmt::format("{} will be removed from {} for good.{}", what, harmlessLine(store.base().string()),
                       stays);
}

/// What is to be destroyed, in which folder, and whether that needs no answer.
struct Plan {
    const FolderOptions& options;
    const Environment& environment;
    bool yes;
    Store store = LockedStore(options, environment).store;
};

/// Says what will be gone, asks, and does it. The folder is locked and opened again only then: counting goes
/// on meanwhile, and the format may change.
void confirmed(const Plan& plan, std::string_view loss, const std::function<void(const Store&)>& destroy) {
    confirm(warning(plan.store, loss), plan.yes);
    const LockedStore locked(plan.options, plan.environment);
    if (locked.store.base() != plan.store.base())
        throw Failure("nothing done", "the data folder is now " + locked.store.base().string());
    destroy(locked.store);
    print("Done.\n");
}

struct Reset {
    std::string_view name;
    std::string (*loss)(const Store& own);
    void (*run)(const Store& store);
};

using Forget = bool (Store::*)(const tapcore::Progress&) const;

template <Forget forget>
void interruptibly(const Store& store) {
    LongWork work("forgetting");
    work.requireDone((store.*forget)(work.progress()));
}

constexpr Reset resets[] = {
    {"heatmap",
     [](const Store& store) {
         return fmt::format("Which keys were pressed, in {} (how many stays){},",
                            tapcore::counted(store.days().size(), "day", "days"), besides(store));
     },
     interruptibly<&Store::resetHeatmap>},
    {"shortcuts",
     [](const Store& store) {
         return fmt::format("Which shortcuts were pressed, in {}{},",
                            tapcore::counted(store.days().size(), "day", "days"), besides(store));
     },
     interruptibly<&Store::resetShortcuts>},
    {"practice", practiceOf, [](const Store& store) { store.resetPractice(); }},
};

constexpr Reset clearings[] = {
    {"counts", countsOf, [](const Store& store) { store.clearCounts(); }},
    {"all",
     [](const Store& store) {
         return countsOf(store) + ", " + practiceOf(store) + ", all reports and all conversations";
     },
     [](const Store& store) { store.clearAll(); }},
};

const Reset* named(std::span<const Reset> all, std::string_view name) {
    for (const Reset& reset : all)
        if (reset.name == name) return &reset;
    return nullptr;
}

void perform(const Reset& reset, const Plan& plan) {
    confirmed(plan, reset.loss(own(plan.store)), reset.run);
}

/// Fails when a folder of this machine cannot be listed: what would be gone is told from them.
void requireListable(const Store& store) {
    for (const std::string_view folder : Store::ownFolders)
        if (const auto why = tapcore::whyUnlisted(store.base() / folder))
            throw Failure((store.base() / folder).string(), why.message());
}

/// Whether this machine has files of a day, those included that were kept as they were.
bool hasFilesOf(const Day& day, const Store& store) {
    const std::string date = day.description();
    const auto files = tapcore::allDataFiles(store.base() / tapcore::daysFolder);
    return std::any_of(files.begin(), files.end(), [&](const tapcore::ListedFile& file) {
        return file.name == date || (file.name.starts_with(date) && tapcore::isKeptDayName(file.name));
    });
}

void clearOneDay(const Day& day, const Plan& plan) {
    const Store& store = plan.store;
    if (!hasFilesOf(day, store)) {
        const bool isElsewhere = store.names(tapcore::daysFolder).contains(day.description());
        print(fmt::format("This machine has no counts of {}.\n", day.description()));
        if (isElsewhere) print("Those in the folder are other machines', or from before it was shared.\n");
        return;
    }
    const auto files = tapcore::dataFiles(store.base() / tapcore::daysFolder);
    const bool isAway = std::any_of(files.begin(), files.end(), [&](const tapcore::ListedFile& file) {
        return file.name == day.description() && !file.isHere;
    });
    const std::string loss =
        isAway ? day.description() + ", of which a file is not yet downloaded from iCloud Drive,"
               : day.description() + " with " + keystrokes(own(store), {day});
    confirmed(plan, loss, [&](const Store& opened) { opened.clearDay(day); });
}

}  // namespace

void convertFolder(const std::optional<std::string>& format, const FolderOptions& options,
                   const Environment& environment) {
    const auto chosen = format ? std::optional(parseFormat("--to", *format)) : std::nullopt;
    LockedStore locked(options, environment);
    requireListable(locked.store);
    if (chosen) {
        auto config = tapcore::FolderConfig::readToChange(locked.store.root);
        config.format = locked.store.format = *chosen;
        locked.store.settle(config.write(locked.store.root));
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
    const Day now = today(options, environment, environment.calendar);
    const LockedStore locked(options, environment);
    LongWork work("summing months");
    tapcore::FileProblems problems;
    work.requireDone(locked.store.refreshRollups(now, work.progress(), &problems));
    const std::size_t months = countedNames(own(locked.store), tapcore::monthsFolder, &problems).size();
    complainOf(problems);
    if (!problems.empty()) throw Failure(locked.store.base().string(), "not all months are up to date");
    print(fmt::format("{}: {} up to date\n", harmlessLine(locked.store.base().string()),
                      tapcore::counted(months, "month", "months")));
}

void checkDataFolder(const FolderOptions& options, const Environment& environment, bool json) {
    const Store store = openStore(options, environment);
    const Day now = today(options, environment, environment.calendar);
    const tapcore::FileProblems problems =
        tapcore::checkFolder(store, now, tapcore::leftOutOf<tapcore::PracticeDay>);
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

void resetFolder(const std::string& what, bool yes, const FolderOptions& options,
                 const Environment& environment) {
    const Reset* reset = named(resets, what);
    if (!reset) throw UsageError("folder reset: not heatmap, shortcuts or practice: " + what);
    const Plan plan{options, environment, yes};
    requireListable(plan.store);
    perform(*reset, plan);
}

void clearFolder(const std::string& what, bool yes, const FolderOptions& options,
                 const Environment& environment) {
    const Reset* clearing = named(clearings, what);
    if (!clearing && !Day::parse(what))
        throw UsageError("folder clear: not a date (YYYY-MM-DD), counts or all: " + what);
    const auto day = clearing ? std::nullopt : std::optional(parseDay("folder clear", what));
    const Plan plan{options, environment, yes};
    requireListable(plan.store);
    if (day) clearOneDay(*day, plan);
    else perform(*clearing, plan);
}

}  // namespace tappora

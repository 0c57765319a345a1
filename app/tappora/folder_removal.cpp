// Forgetting and removing what the data folder holds, after asking.

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "app/common/command_line/confirm.h"
#include "app/common/folder/data_folder.h"
#include "app/common/harmless_text.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/common/terminal/long_work.h"
#include "app/tappora/folder_tasks.h"
#include "core/files/counted_names.h"
#include "core/files/data_listing.h"
#include "core/files/day_file.h"
#include "core/files/file_copies.h"
#include "core/files/folder_names.h"
#include "core/files/row_reader.h"
#include "core/files/store.h"
#include "core/foundation/fatal.h"
#include "core/foundation/file_io.h"
#include "core/foundation/integers.h"

namespace tappora {
namespace {

using tapcore::Day;
using tapcore::Store;

/// "1,204,331 keystrokes", or that there are too many to tell: what destroys is the way to repair that.
std::string keystrokes(const Store& store, const std::vector<Day>& days) {
    tapcore::CountSum counts;
    for (const Day& day : days) store.addNumbers(counts, day);
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
        lines += tapcore::skippedRowsOf<tapcore::DayFile>(text).size();
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

/// What can be forgotten or removed, by its name on the command line.
struct Removal {
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

/// "WHAT, in 214 days", and what else goes with it.
std::string inDays(std::string_view what, std::string_view stays, const Store& store) {
    return fmt::format("{}, in {}{}{},", what, tapcore::counted(store.days().size(), "day", "days"), stays,
                       besides(store));
}

std::string keysOf(const Store& store) {
    return inDays("Which keys were pressed", " (how many stays)", store);
}
std::string shortcutsOf(const Store& store) { return inDays("Which shortcuts were pressed", "", store); }

std::string everythingOf(const Store& store) {
    return countsOf(store) + ", " + practiceOf(store) + ", all reports and all conversations";
}

constexpr Removal resets[] = {
    {"heatmap", keysOf, interruptibly<&Store::resetHeatmap>},
    {"shortcuts", shortcutsOf, interruptibly<&Store::resetShortcuts>},
    {"practice", practiceOf, [](const Store& store) { store.resetPractice(); }},
};

constexpr Removal clearings[] = {
    {"counts", countsOf, [](const Store& store) { store.clearCounts(); }},
    {"all", everythingOf, [](const Store& store) { store.clearAll(); }},
};

const Removal* named(std::span<const Removal> all, std::string_view name) {
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const Removal& one) { return one.name == name; });
    return found == all.end() ? nullptr : &*found;
}

std::vector<std::string> namesOf(std::span<const Removal> all) {
    std::vector<std::string> names;
    for (const Removal& removal : all) names.emplace_back(removal.name);
    return names;
}

void perform(const Removal& removal, const Plan& plan) {
    confirmed(plan, removal.loss(plan.store.own()), removal.run);
}

/// Whether this machine has files of a day, those included that were kept as they were.
bool hasFilesOf(const Day& day, const Store& store) {
    const std::string date = day.description();
    const auto waiting = store.waitingHours();
    if (std::any_of(waiting.begin(), waiting.end(), [&](const auto& hour) { return hour.day == day; }))
        return true;
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
               : day.description() + " with " + keystrokes(store.own(), {day});
    confirmed(plan, loss, [&](const Store& opened) { opened.clearDay(day); });
}

}  // namespace

std::vector<std::string> resetChoices() { return namesOf(resets); }

std::vector<std::string> clearChoices() {
    std::vector<std::string> names = namesOf(clearings);
    names.insert(names.begin(), "YYYY-MM-DD");
    return names;
}

void resetFolder(const std::string& what, bool yes, const FolderOptions& options,
                 const Environment& environment) {
    const Removal* reset = named(resets, what);
    if (!reset) throw UsageError("folder reset: " + noSuch("choice", what, resetChoices()));
    const Plan plan{options, environment, yes};
    requireListable(plan.store);
    perform(*reset, plan);
}

void clearFolder(const std::string& what, bool yes, const FolderOptions& options,
                 const Environment& environment) {
    const Removal* clearing = named(clearings, what);
    if (!clearing && !Day::parse(what))
        throw UsageError("folder clear: " + noSuch("choice", what, clearChoices()));
    const auto day = clearing ? std::nullopt : std::optional(parseDay("folder clear", what));
    const Plan plan{options, environment, yes};
    requireListable(plan.store);
    if (day) clearOneDay(*day, plan);
    else perform(*clearing, plan);
}

}  // namespace tappora

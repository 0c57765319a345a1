// Where the data folder is: showing, choosing, sharing it.

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

#include "app/common/command_line/records_json.h"
#include "app/common/folder/data_folder.h"
#include "app/common/folder/quiet_hours.h"
#include "app/common/folder/settings.h"
#include "app/common/folder/tell.h"
#include "app/common/folder/waiting_place.h"
#include "app/common/harmless_text.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/common/terminal/long_work.h"
#include "app/tappora/folder_tasks.h"
#include "core/files/adoption.h"
#include "core/files/counted_names.h"
#include "core/files/data_listing.h"
#include "core/files/folder_config.h"
#include "core/files/folder_names.h"
#include "core/files/mac_folder.h"
#include "core/foundation/file_io.h"
#include "core/foundation/folder_listing.h"
#include "core/foundation/integers.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;
using tapcore::Store;

struct Contents {
    std::uintmax_t bytes = 0;
    std::size_t files = 0;
    std::size_t inCloud = 0;
};

/// What is in the folders of a part.
void add(Contents& contents, const fs::path& folder, tapcore::FileProblems& problems) {
    const tapcore::FolderListing listing = tapcore::listFolder(folder);
    if (listing.status == tapcore::FolderListing::Status::unreadable)
        problems.push_back({folder, 0, listing.error.message()});
    for (const std::string& name : listing.names) {
        std::error_code error;
        const fs::path path = folder / name;
        const fs::file_status status = fs::symlink_status(path, error);
        if (fs::is_directory(status)) add(contents, path, problems);
        if (!fs::is_regular_file(fs::status(path, error))) continue;
        ++contents.files;
        contents.bytes += fs::file_size(path, error);
        contents.inCloud += path.extension() == ".icloud" ? 1 : 0;
    }
}

std::string readableSize(std::uintmax_t bytes) {
    if (bytes < 10'000) return fmt::format("{} bytes", bytes);
    if (bytes < 10'000'000) return fmt::format("{} kB", bytes / 1000);
    return fmt::format("{} MB", bytes / 1'000'000);
}

/// Of days, of which there are some.
std::string span(const std::vector<tapcore::Day>& days) {
    return fmt::format("{}, {} to {}", tapcore::counted(days.size(), "day", "days"),
                       days.front().description(), days.back().description());
}

/// What the folder holds, listed once. What could not be listed is missing in it, and named.
struct Shown {
    explicit Shown(const Store& store)
        : days(store.days(&unlistedDays)),
          months(countedNames(store, tapcore::monthsFolder, &unlistedMonths)),
          practice(countedNames(store, tapcore::practiceFolder, &unlistedPractice)),
          needsConversion(store.needsConversion(&problems)) {
        for (const Store& part : store.readParts(&problems))
            for (const std::string_view folder : Store::ownFolders)
                add(contents, part.root / folder, problems);
        for (const tapcore::FileProblems* some : {&unlistedDays, &unlistedMonths, &unlistedPractice})
            problems.insert(problems.end(), some->begin(), some->end());
    }

    tapcore::FileProblems problems, unlistedDays, unlistedMonths, unlistedPractice;
    std::vector<tapcore::Day> days;
    std::set<std::string> months;
    std::set<std::string> practice;
    bool needsConversion;
    Contents contents;
};

/// What was found, said only as far as it is known.
std::string asKnown(const tapcore::FileProblems& unlisted, bool isNone, std::string_view none,
                    std::string_view found) {
    if (unlisted.empty()) return std::string(isNone ? none : found);
    return isNone ? "not known" : fmt::format("at least {}", found);
}

void printText(const FolderChoice& choice, const Store& store, const Shown& shown) {
    const auto row = [](std::string_view title, std::string_view value) {
        print(fmt::format("{:<10} {}\n", title, value));
    };
    const Contents& contents = shown.contents;
    row("Folder", choice.root.string());
    row("Chosen", choice.why());
    row("Format", store.format.title());
    if (const auto macs = store.macs(); !macs.empty())
        row("Machines", harmlessLine(fmt::format("{}", fmt::join(macs, ", "))));
    if (store.mac) row("This one", harmlessLine(*store.mac));
    row("Counts", asKnown(shown.unlistedDays, shown.days.empty(), "none yet",
                          shown.days.empty() ? "" : span(shown.days)));
    row("Months",
        asKnown(shown.unlistedMonths, shown.months.empty(), "0", std::to_string(shown.months.size())));
    row("Practice", asKnown(shown.unlistedPractice, shown.practice.empty(), "0 days",
                            tapcore::counted(shown.practice.size(), "day", "days")));
    row("Size", fmt::format("{} in {}", readableSize(contents.bytes),
                            tapcore::counted(contents.files, "file", "files")));
    if (contents.inCloud > 0)
        row("In iCloud",
            tapcore::counted(contents.inCloud, "file not yet downloaded", "files not yet downloaded"));
    if (shown.needsConversion)
        print("Some files are in the other format; tappora folder convert makes them one.\n");
}

nlohmann::json toJson(const FolderChoice& choice, const Store& store, const Shown& shown) {
    nlohmann::json days = nlohmann::json::array();
    for (const tapcore::Day& day : shown.days) days.push_back(day.description());
    nlohmann::json result = {{"root", choice.root.string()},
                             {"why", choice.why()},
                             {"format", store.format.rawValue()},
                             {"macs", store.macs()},
                             {"days", days},
                             {"months", shown.months},
                             {"practice", shown.practice},
                             {"bytes", shown.contents.bytes},
                             {"files", shown.contents.files},
                             {"inCloud", shown.contents.inCloud},
                             {"needsConversion", shown.needsConversion}};
    if (store.mac) result["mac"] = *store.mac;
    std::set<std::string> unlisted;
    for (const tapcore::FileProblem& problem : shown.problems) unlisted.insert(problem.path.string());
    if (!unlisted.empty()) result["unlisted"] = unlisted;
    return result;
}

}  // namespace

void showFolder(const FolderOptions& options, const Environment& environment, bool json) {
    const FolderChoice choice = chooseFolder(options, environment);
    const Store store = openStore(options, environment);
    const Shown shown(store);
    requireAnswer(shown.problems, shown.contents.files == 0);
    if (json) print(jsonText(toJson(choice, store, shown)));
    else printText(choice, store, shown);
}

void setFolder(const std::optional<std::string>& directory, const Environment& environment) {
    if (directory && directory->empty()) throw UsageError("folder set: name a folder, or say --usual");
    const fs::path folder = directory ? fs::absolute(*directory).lexically_normal() : fs::path();
    const Settings settings = Settings::change(environment, [&](Settings& all) {
        if (!directory) return all.remove(folderKey);
        complainOf(tapcore::makeFolders(folder));
        all.setText(folderKey, folder.string());
    });
    const FolderChoice choice = chooseFolder(settings, environment);
    if (choice.rule == FolderChoice::Rule::environment)
        return print(fmt::format("{}: stored, but TAPPORA_FOLDER overrides it: {}\n",
                                 settings.text(folderKey).value_or("the default folder"),
                                 choice.root.string()));
    print(fmt::format("{}: {}\n", choice.root.string(), choice.why()));
}

void shareFolder(const FolderOptions& options, const Environment& environment) {
    const LockedStore locked(options, environment, true);
    const Store& store = locked.store;
    print(fmt::format("{}: this machine writes into \"{}\"\n", store.root.string(),
                      harmlessLine(store.mac.value_or(""))));
    tapcore::FileProblems problems;
    const bool hasTop = !tapcore::dataFiles(store.root / tapcore::daysFolder, problems).empty();
    complainOf(problems);
    if (hasTop)
        print("The files that are there already stay at the top of the folder, and count as before.\n");
}

namespace {

using tapcore::MacFolder::Adoption;

/// Takes over the files, and names those that were not taken, however it ends.
Adoption takeOver(const std::string& directory, const Store& store, tapcore::FileProblems& missing) {
    try {
        LongWork work("taking over");
        const Adoption outcome = tapcore::MacFolder::adopt(directory, store, work.progress(), &missing);
        work.requireDone(outcome != Adoption::interrupted);
        complainOf(missing);
        return outcome;
    } catch (...) {
        complainOf(missing);
        throw;
    }
}

/// Says that this folder keeps its settings, where the other folder's differ.
void tellWhoseSettingsStand(const std::string& directory, const Store& store) {
    const auto read = [](const fs::path& root) {
        return tapcore::readStoredFile(tapcore::FolderConfig::url(root));
    };
    const tapcore::FileRead theirs = read(directory);
    const tapcore::FileRead ours = read(store.root);
    using Status = tapcore::FileRead::Status;
    if (theirs.status == Status::read && ours.status == Status::read && theirs.text != ours.text)
        print(fmt::format("{}: keeps its own settings; those of {} differ\n",
                          harmlessLine(store.root.string()), harmlessLine(directory)));
}

/// Takes the hours that wait for the old folder into it, the current one too, so that they are taken over
/// with its days.
void takeInWaitingFor(const std::string& oldFolder, const FolderOptions& options,
                      const Environment& environment) {
    const fs::path root = chooseFolder(options, environment).root;
    if (waitingPlace(environment, oldFolder) == waitingPlace(environment, root)) return;
    const FolderOptions old{.folder = oldFolder, .today = std::nullopt};
    if (openStore(old, environment).waitingHours().empty()) return;
    const LockedStore locked(old, environment);
    (void)QuietHours(locked.store, QuietRules::now(environment).afterwards()).takeIn();
}

}  // namespace

void adoptFolder(const std::string& directory, const FolderOptions& options, const Environment& environment) {
    if (!fs::is_directory(directory)) throw Failure(directory, "no such folder");
    const tapcore::Day now = today(options, environment, environment.calendar);
    takeInWaitingFor(directory, options, environment);
    const LockedStore locked(options, environment);
    const Store& store = locked.store;
    tapcore::FileProblems missing;
    const Adoption outcome = takeOver(directory, store, missing);
    if (outcome == Adoption::sameFolder)
        throw Failure(directory, "is the data folder itself, or a part of it");
    if (outcome == Adoption::nothing) throw Failure(directory, "holds no days to take over");
    if (outcome == Adoption::holdsDays)
        throw Failure(store.base().string(), "holds days already, so nothing is taken over");
    tellWhoseSettingsStand(directory, store);
    tapcore::FileProblems unsummed;
    store.refreshRollups(now, {}, &unsummed);
    complainOf(unsummed);
    if (outcome == Adoption::incomplete)
        throw Failure(directory,
                      fmt::format("{} not taken over, so this folder is still needed; the same command "
                                  "again takes what it can by then",
                                  tapcore::counted(missing.size(), "item was", "items were")));
    print(fmt::format("{}: took over what {} holds\n", harmlessLine(store.base().string()),
                      harmlessLine(directory)));
}

}  // namespace tappora

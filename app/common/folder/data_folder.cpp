#include "app/common/folder/data_folder.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <filesystem>

#include "app/common/command_line/command_line.h"
#include "app/common/folder/machine.h"
#include "app/common/folder/settings.h"
#include "app/common/folder/tell.h"
#include "app/common/folder/waiting_place.h"
#include "app/common/harmless_text.h"
#include "app/common/program.h"
#include "app/common/system/directories.h"
#include "app/common/system/environment.h"
#include "core/files/folder_config.h"
#include "core/files/mac_folder.h"
#include "core/files/row_import.h"
#include "core/foundation/file_io.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;
using tapcore::Store;

fs::path homeFolder(const Environment& environment) {
    return required(homeDirectory(environment.variable), "; name the data folder with --folder");
}

bool hasText(const std::optional<std::string>& text) { return text && !text->empty(); }

std::optional<FolderChoice> namedByEnvironment(const Environment& environment) {
    const auto named = environment.variable("TAPPORA_FOLDER");
    if (!hasText(named)) return std::nullopt;
    return FolderChoice{*named, FolderChoice::Rule::environment};
}

FolderChoice usualFolder(const fs::path& home) {
    using Rule = FolderChoice::Rule;
    const fs::path root = Store::defaultRoot(home);
    return {root, Store::iCloudRoot(home) == root   ? Rule::cloud
                  : Store::legacyRoot(home) == root ? Rule::earlier
                                                    : Rule::usual};
}

/// Refuses a folder that cannot be read. One that is not there is fine when nobody named it: nothing is
/// counted yet.
void requireFolder(const FolderChoice& choice) {
    std::error_code error;
    const auto status = fs::status(choice.root, error);
    if (!fs::exists(status)) {
        if (choice.isNamed()) throw Failure(choice.root.string(), "no such folder");
        return;
    }
    if (!fs::is_directory(status)) throw Failure(choice.root.string(), "not a folder");
    fs::directory_iterator(choice.root, error);
    if (error) throw Failure(choice.root.string(), error.message());
}

/// Says at once, before anything is written, that --today does not name a day.
const FolderOptions& checked(const FolderOptions& options) {
    if (options.today) (void)parseDay("--today", *options.today);
    return options;
}

/// Locks the data folder, which is made when nobody named one and nothing was counted yet.
FolderLock lockData(const FolderOptions& options, const Environment& environment, bool share,
                    const Tell& tell, const LockForWriting& lockForWriting) {
    const FolderChoice choice = chooseFolder(checked(options), environment);
    requireFolder(choice);
    // Before the lock: the settings have one of their own, and may be in this very folder.
    if (share || Store::isShared(choice.root)) (void)Machine::kept(environment, tell, lockForWriting);
    complainOf(tapcore::makeFolders(choice.root), tell);
    FolderLock lock = lockForWriting(environment, choice.root);
    complainOfReach(lock, choice.root, tell);
    return lock;
}

/// Whether a folder is shared; Failure when that cannot be told: its top might be taken for this machine's
/// own.
bool isShared(const fs::path& root) {
    tapcore::FileProblems problems;
    const bool shared = Store::isShared(root, &problems);
    for (const auto& problem : problems)
        if (!shared && problem.path == root) throw Failure(root.string(), problem.why);
    return shared;
}

/// Adds what an interrupted import left. What prevents that is named, and prevents nothing else.
void finishImport(const Store& store, const Tell& tell) try {
    tapcore::finishImport(store);
} catch (const fs::filesystem_error& error) {
    tell(fmt::format("{}: an import is not finished: {}", error.path1().string(), error.code().message()));
}

using ReadConfig = tapcore::FolderConfig (*)(const fs::path& root);

/// The sub-folder with this machine's mark, if it has one there already.
std::optional<std::string> ownSubfolder(const fs::path& root, const Environment& environment) {
    if (!isShared(root)) return std::nullopt;
    Settings settings = Settings::read(environment);
    return tapcore::MacFolder::find(root, Machine::of(settings).id);
}

Store opened(const FolderOptions& options, const Environment& environment, ReadConfig readConfig) {
    const FolderChoice choice = chooseFolder(options, environment);
    requireFolder(choice);
    const Store store(choice.root, readConfig(choice.root).format, ownSubfolder(choice.root, environment));
    const auto waiting = waitingPlace(environment, choice.root);
    return waiting ? store.waitingIn(*waiting) : store;
}

}  // namespace

void addFolderOptions(CommandSyntax& command, FolderOptions& options) {
    command.option("--folder", options.folder, "The data folder, instead of the default [TAPPORA_FOLDER]")
        .type("DIR");
    command.option("--today", options.today, "The day to use as today").type("YYYY-MM-DD");
}

std::string_view FolderChoice::why() const {
    switch (rule) {
        case Rule::option:
            return "named by --folder";
        case Rule::environment:
            return "named by TAPPORA_FOLDER";
        case Rule::setting:
            return "named by tappora folder set";
        case Rule::cloud:
            return "the app's folder in iCloud Drive";
        case Rule::earlier:
            return "kept from an earlier version";
        case Rule::usual:
            return "the default folder";
    }
    return "";
}

FolderChoice chooseFolder(const FolderOptions& options, const Environment& environment) {
    if (options.folder && options.folder->empty()) throw UsageError("--folder: empty");
    if (options.folder) return {*options.folder, FolderChoice::Rule::option};
    if (const auto named = namedByEnvironment(environment)) return *named;
    (void)homeFolder(environment);
    return chooseFolder(Settings::read(environment), environment);
}

FolderChoice chooseFolder(const Settings& settings, const Environment& environment) {
    if (const auto named = namedByEnvironment(environment)) return *named;
    if (const auto set = settings.text(folderKey); hasText(set)) {
        if (!fs::path(*set).is_absolute())
            throw Failure(fmt::format("{}: {}", settings.path().string(), folderKey),
                          *set + ": not an absolute path; tappora folder set takes any");
        return {*set, FolderChoice::Rule::setting};
    }
    return usualFolder(homeFolder(environment));
}

Store openStore(const FolderOptions& options, const Environment& environment) {
    return opened(options, environment,
                  [](const fs::path& root) { return tapcore::FolderConfig::read(root); });
}

LockedStore::LockedStore(const FolderOptions& options, const Environment& environment, bool share,
                         const Tell& tell, const LockForWriting& lockForWriting)
    : lock(lockData(options, environment, share, tell, lockForWriting)),
      store(opened(options, environment, tapcore::FolderConfig::readToChange).telling(complainOnce(tell))) {
    finishImport(store, tell);
    if (!store.mac && !share && !isShared(store.root)) return;
    const Machine machine = Machine::kept(environment, tell, lockForWriting);
    const auto told = [&](const tapcore::Written& unsafe) { store.warnUnlessSafe(unsafe); };
    if (!store.mac) store.settleWaiting();  // while it is known in which folder they were taken in
    store.mac = tapcore::MacFolder::resolve(store.root, machine.id, machine.name, told);
}

tapcore::Day today(const FolderOptions& options, const Environment& environment,
                   const tapcore::Calendar& calendar) {
    return options.today ? parseDay("--today", *options.today) : tapcore::Day(environment.now, calendar);
}

double hoursPassed(const tapcore::Day& today, const Environment& environment,
                   const tapcore::Calendar& calendar) {
    if (today != tapcore::Day(environment.now, calendar)) return tapcore::Tally::hours;
    const tapcore::LocalTime time = calendar.local(environment.now);
    return static_cast<double>(time.hour * 3600 + time.minute * 60 + time.second) / 3600;
}

tapcore::Day parseDay(std::string_view what, std::string_view text) {
    const auto day = tapcore::Day::parse(text);
    if (!day) throw UsageError(fmt::format("{}: invalid date: {}; use YYYY-MM-DD", what, text));
    const std::chrono::year_month_day date(std::chrono::year(static_cast<int>(day->year)),
                                           std::chrono::month(static_cast<unsigned>(day->month)),
                                           std::chrono::day(static_cast<unsigned>(day->day)));
    if (!date.ok()) throw UsageError(fmt::format("{}: invalid date: {}", what, text));
    return *day;
}

tapcore::FileFormat parseFormat(std::string_view what, std::string_view text) {
    const auto format = tapcore::FileFormat::parse(text);
    if (!format)
        throw UsageError(
            fmt::format("{}: {}", what, noSuch("format", text, tapcore::FileFormat::words.names())));
    return *format;
}

std::string described(const tapcore::FileProblem& problem) {
    const std::string line = problem.line == 0 ? "" : fmt::format(":{}", problem.line);
    return harmlessLine(fmt::format("{}{}: {}", problem.path.string(), line, problem.why));
}

void complainOf(const tapcore::FileProblems& problems, const Tell& tell) {
    for (auto problem = problems.begin(); problem != problems.end(); ++problem)
        if (std::find(problems.begin(), problem, *problem) == problem) tell(described(*problem));
}

void requireAnswer(const tapcore::FileProblems& problems, bool isEmpty) {
    if (!isEmpty || problems.empty()) return complainOf(problems);
    tapcore::FileProblems others = problems;
    std::erase(others, problems.front());
    complainOf(others);
    throw Failure(problems.front().path.string(), problems.front().why);
}

}  // namespace tappora

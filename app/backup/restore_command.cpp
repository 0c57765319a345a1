#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "app/backup/backup.h"
#include "app/backup/commands.h"
#include "app/common/command_line/command_line.h"
#include "app/common/folder/data_folder.h"
#include "app/common/folder/settings.h"
#include "app/common/folder/tell.h"
#include "app/common/harmless_text.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/common/terminal/long_work.h"
#include "core/files/restoring.h"
#include "core/foundation/file_io.h"
#include "core/foundation/integers.h"
#include "core/foundation/json_fields.h"
#include "core/settings/setting.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;
using tapcore::Store;

struct Asked {
    fs::path file;
    FolderOptions folder;
    bool list = false;
    bool add = false;
    bool json = false;
};

Backup backupIn(const fs::path& file) {
    const tapcore::FileRead read = tapcore::readBytes(file, Backup::mostBytes);
    if (const auto why = read.failure()) throw Failure(file.string(), why.message());
    try {
        return Backup::unpacked(read.text);
    } catch (const ArchiveError& error) {
        throw Failure(file.string(), error.what());
    }
}

void listBackup(const Backup& backup, bool isJson) {
    nlohmann::json files = nlohmann::json::array();
    for (const tapcore::KeptFile& file : backup.files) {
        files.push_back({{"name", file.name}, {"bytes", file.text.size()}});
        if (!isJson)
            print(fmt::format("{:>12}  {}\n", tapcore::grouped(static_cast<std::int64_t>(file.text.size())),
                              harmlessLine(file.name)));
    }
    const bool hasSettings = backup.settings.has_value();
    if (isJson)
        return print(
            tapcore::jsonText({{"program", backup.program}, {"files", files}, {"settings", hasSettings}}));
    print(fmt::format("{}{}, made by {}\n", tapcore::counted(backup.files.size(), "file", "files"),
                      hasSettings ? " and a machine's settings" : "", harmlessLine(backup.program)));
}

using Values = std::map<std::string, std::string, std::less<>>;

/// The settings that a backup holds; what is one machine's own does not go to another one.
Values settingsOf(const Backup& backup, const fs::path& file) {
    if (!backup.settings) return {};
    try {
        Values values = Settings::parse(*backup.settings);
        std::erase_if(values, [](const auto& item) {
            return item.first.starts_with("machine.") || item.first == folderKey;
        });
        return values;
    } catch (const tapcore::JsonError& error) {
        throw Failure(file.string(), std::string("settings/settings.json: ") + error.what());
    }
}

/// "WHAT: a, b", when there is any.
void printNames(std::string_view what, const std::vector<std::string>& names) {
    if (!names.empty()) print(fmt::format("{}: {}\n", what, fmt::join(names, ", ")));
}

/// Removes the values that their settings do not accept, and says so; gives how many there were.
std::size_t removeUnusable(Values& values, const fs::path& file) {
    return std::erase_if(values, [&](const auto& item) {
        if (!tapcore::findSetting(item.first)) return false;
        const std::string why = Settings::whyRefused(item.first, nlohmann::json::parse(item.second));
        if (!why.empty())
            complain(fmt::format("{}: settings/settings.json: {}: {}", file.string(), item.first, why));
        return !why.empty();
    });
}

/// Takes those that are not set here, and says which are, and which are set otherwise.
void restoreSettings(const Values& values, const Environment& environment) {
    if (values.empty()) return;
    std::vector<std::string> taken, others;
    Settings::change(environment, [&](Settings& all) {
        for (const auto& [key, value] : values) {
            const auto here = all.stored().find(key);
            if (here != all.stored().end() && here->second == value) continue;
            (here == all.stored().end() ? taken : others).push_back(harmlessLine(key));
            if (here == all.stored().end()) all.set(key, nlohmann::json::parse(value));
        }
    });
    printNames("Set as in the backup", taken);
    printNames("Set otherwise on this machine, and left so", others);
}

/// A folder of several machines beside the days of one: nobody could tell which days are the same.
void requireFits(const Backup& backup, const Store& store) {
    if (tapcore::areShared(backup.files) && !Store::isShared(store.root) && store.hasData())
        throw Failure(
            store.root.string(),
            "holds days of one machine, and the backup is of a folder that several share; restore it "
            "into an empty folder with --folder");
}

tapcore::Restored restoreFiles(const Backup& backup, const Asked& asked, const Store& store,
                               tapcore::FileProblems& left) {
    LongWork work("restoring");
    const auto days = asked.add ? tapcore::DaysHere::added : tapcore::DaysHere::left;
    try {
        const auto restored = tapcore::restore(backup.files, store, days, work.progress(), left);
        work.requireDone(restored.isWhole);
        return restored;
    } catch (const fs::filesystem_error& error) {
        throw Failure(error.path1().string(),
                      error.code().message() + "; nothing is lost: the same command again does the rest");
    }
}

void sumMonths(const Store& store, const tapcore::Day& now) {
    tapcore::FileProblems unsummed;
    store.refreshRollups(now, {}, &unsummed);
    complainOf(unsummed);
}

void printOutcome(const tapcore::Restored& restored, const fs::path& root) {
    const std::string added =
        restored.added == 0 ? "" : tapcore::counted(restored.added, "day added, ", "days added, ");
    print(fmt::format("{}: {} restored, {}{} here already\n", harmlessLine(root.string()),
                      tapcore::counted(restored.placed, "file", "files"), added, restored.same));
    if (restored.settingsDiffer)
        print(fmt::format("{}: keeps its own settings; those of the backup differ\n",
                          harmlessLine(root.string())));
}

void restoreBackup(const Asked& asked, const Environment& environment) {
    const Backup backup = backupIn(asked.file);
    if (asked.list) return listBackup(backup, asked.json);
    Values settings = settingsOf(backup, asked.file);
    (void)Settings::read(environment);  // refuses a broken file before anything is done
    const tapcore::Day now = today(asked.folder, environment, environment.calendar);
    requireFits(backup, openStore(asked.folder, environment));
    const LockedStore locked(asked.folder, environment);
    const bool wasEmpty = !locked.store.hasData();
    tapcore::FileProblems left;
    const auto restored = restoreFiles(backup, asked, locked.store, left);
    complainOf(left);
    if (!wasEmpty) sumMonths(locked.store, now);
    const std::size_t unusable = removeUnusable(settings, asked.file);
    restoreSettings(settings, environment);
    printOutcome(restored, locked.store.root);
    if (!left.empty())
        throw Failure(asked.file.string(),
                      fmt::format("{} left out{}", tapcore::counted(left.size(), "file was", "files were"),
                                  restored.mayAdd ? "; --add adds the counts of days to those here" : ""));
    if (unusable > 0)
        throw Failure(asked.file.string(),
                      tapcore::counted(unusable, "setting was", "settings were") + " left out");
}

}  // namespace

void restoreCommand(CommandLine& line, const Environment& environment) {
    Asked asked;
    line.describe(
        "Take what a backup holds into the data folder and this machine's settings; nothing that is "
        "there is replaced",
        "tappora restore tappora.tar.zst");
    line.option("FILE", asked.file, "A file that tappora backup wrote").required();
    const Option list = line.flag("--list", asked.list, "Only check the backup, and print what it holds");
    line.flag("--add", asked.add,
              "Add the counts of a day to other counts of it that are here: for a backup of another machine");
    line.flag("--json", asked.json, "Print the list as JSON").needs(list);
    addFolderOptions(line, asked.folder);
    line.parse();
    restoreBackup(asked, environment);
}

}  // namespace tappora

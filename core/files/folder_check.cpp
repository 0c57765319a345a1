#include "core/files/folder_check.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "core/files/count_sum.h"
#include "core/files/data_listing.h"
#include "core/files/file_copies.h"
#include "core/files/folder_config.h"
#include "core/files/folder_names.h"
#include "core/files/mac_folder.h"
#include "core/files/row_import.h"
#include "core/foundation/fatal.h"
#include "core/foundation/file_io.h"
#include "core/foundation/utf8.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

/// Why a data file is not counted by its name; empty for a name as it should be.
std::string nameProblem(std::string_view name, bool isMonth) {
    if (isMonth ? isMonthName(name) : isDayName(name)) return "";
    if (isKeptDayName(name))
        return "the day as it was before lines were left out; repair the day from it, then remove it";
    const std::string_view start = name.substr(0, isMonth ? 7 : 10);
    if (isMonth ? isMonthName(start) : isDayName(start))
        return "a copy of " + std::string(start) + " that another program left; it is not counted";
    return isMonth ? "not named after a month (YYYY-MM); it is not counted"
                   : "not named after a day (YYYY-MM-DD); it is not counted";
}

/// Whose files a part holds, and so who can bring its months up to date.
struct Owner {
    bool isThisMachine = false;
    std::string remedy;
};

class FolderCheck {
  public:
    FolderCheck(const Day& today, const SkippedRowsOf& practiceRows)
        : today_(today), practiceRows_(practiceRows) {}

    void checkSettings(const fs::path& root) { (void)FolderConfig::read(root, &problems_); }

    void checkFolders(const Store& store) { (void)store.readParts(&problems_); }

    void checkMarker(const fs::path& folder) {
        const auto mark = MacFolder::readMark(folder, &problems_);
        if (!mark) return;
        const auto [known, isNew] = machines_.emplace(mark->id, folder);
        if (!isNew) report(folder / MacFolder::marker, "the same id as " + known->second.string());
    }

    void checkWaiting(const Store& own) try {
        for (const WaitingHour& hour : own.waitingHours()) checkFile(own.url(hour), daysFolder);
    } catch (const fs::filesystem_error& error) {
        report(error.path1(), error.code().message());
    }

    void checkPart(const Store& part, const Owner& owner) {
        for (const std::string_view folder : {daysFolder, monthsFolder, practiceFolder})
            checkFiles(part, folder, owner);
        if (isThere(importNote(part.root)))
            report(importNote(part.root),
                   "an import was interrupted; the next command that writes there finishes it");
    }

    /// Names the finished months that have days and no rollup. One with days that cannot be read, or are
    /// still in iCloud Drive, cannot have one yet.
    void checkMissingRollups(const Store& own) {
        std::map<std::string, bool> canBeMade;
        FileProblems named;  // when the files themselves were checked
        for (const ListedFile& file : dataFiles(own.base() / daysFolder, named)) {
            if (!isDayName(file.name)) continue;
            const std::string month = Day::parse(file.name)->monthName();
            if (month < today_.monthName())
                canBeMade.try_emplace(month, true).first->second &=
                    file.isHere && !unread_.contains(own.base() / daysFolder / file.fileName());
        }
        std::set<std::string> made;
        for (ListedFile& file : dataFiles(own.base() / monthsFolder, named))
            made.insert(std::move(file.name));
        for (const auto& [month, can] : canBeMade)
            if (named.empty() && can && !made.contains(month))
                report(own.urlForMonth(month), "missing; tappora folder rollups makes it");
    }

    FileProblems take() { return std::move(problems_); }

  private:
    void report(const fs::path& path, std::string why, std::size_t line = 0) {
        problems_.push_back({path, line, std::move(why)});
    }

    void reportUnread(const fs::path& path, std::string why, std::size_t line = 0) {
        unread_.insert(path);
        report(path, std::move(why), line);
    }

    void checkFiles(const Store& part, std::string_view folder, const Owner& owner) {
        const fs::path path = part.root / folder;
        const std::size_t before = problems_.size();
        const std::vector<ListedFile> files = allDataFiles(path, problems_);
        if (problems_.size() > before) unlisted_.insert(path);
        std::set<std::string> names;
        for (const ListedFile& file : files) {
            const std::string problem = nameProblem(file.name, folder == monthsFolder);
            if (!problem.empty()) report(path / file.fileName(), problem);
            else if (file.isHere) checkFile(path / file.fileName(), folder);
            if (problem.empty() && file.isHere && !names.insert(file.name).second)
                report(path / file.fileName(), "the same is here in another format too");
            if (folder == monthsFolder && problem.empty() && !unlisted_.contains(part.root / daysFolder))
                checkRollup(part, path / file.fileName(), file.name, owner);
        }
    }

    void checkFile(const fs::path& path, std::string_view folder) {
        const FileRead file = readStoredFile(path);
        if (file.status != FileRead::Status::read) return reportUnread(path, file.error.message());
        const FatalContext context("reading", path.native());
        const std::size_t bad = firstInvalidUtf8(file.text);
        if (bad != std::string_view::npos) reportUnread(path, "not UTF-8 text", lineOf(file.text, bad));
        if (!countsFit(file.text)) return reportUnread(path, std::string(tooLarge));
        CountSum& all = together_[path.parent_path().filename() / path.stem()];
        all.add(file.text);
        if (!all.fits()) reportUnread(path, std::string(tooLarge) + " with its copies and other machines'");
        for (const SkippedRow& row : skippedRows(folder, repairedUtf8(file.text)))
            report(path, "not used: " + row.why, row.line);
    }

    /// Another machine's months are as old as its last visit: on its last day, which was not over and is not
    /// in them, or later.
    void checkRollup(const Store& part, const fs::path& path, const std::string& month, const Owner& owner) {
        if (!part.isOutOfDate(month, today_)) return;
        const std::vector<Day> days = part.days();
        const bool mayBeOld = !owner.isThisMachine && !days.empty() && days.back() < today_;
        if (!mayBeOld || part.isOutOfDate(month, days.back())) report(path, "out of date; " + owner.remedy);
    }

    /// Those of a file, read as the record that its folder holds.
    std::vector<SkippedRow> skippedRows(std::string_view folder, std::string_view text) const {
        if (folder == practiceFolder) return practiceRows_(text);
        std::vector<SkippedRow> skipped;
        if (folder == daysFolder) (void)DayFile(text, &skipped);
        else (void)MonthRollup(text, &skipped);
        return skipped;
    }

    static std::size_t lineOf(std::string_view text, std::size_t at) {
        return 1 + static_cast<std::size_t>(
                       std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(at), '\n'));
    }

    Day today_;
    const SkippedRowsOf& practiceRows_;
    std::set<fs::path> unlisted_;            ///< folders
    std::set<fs::path> unread_;              ///< files that no month is summed with
    std::map<fs::path, CountSum> together_;  ///< of files that are added to each other: "days/2026-09-20"
    FileProblems problems_;
    std::map<std::string, fs::path> machines_;  ///< by id
};

Owner ownerOf(const Store& part, const Store& store, bool hasOwn) {
    if (hasOwn && part.root == store.base()) return {true, "tappora folder rollups makes it again"};
    if (part.root == store.root)
        return {false, "it is from before the folder was shared, and no machine brings it up to date"};
    const std::string name = part.root.filename().string();
    return {false, "it is the machine " + name + "'s: tappora folder rollups makes it again there"};
}

}  // namespace

FileProblems checkFolder(const Store& store, const Day& today, const SkippedRowsOf& practiceRows) {
    const bool hasOwn = store.mac || !Store::isShared(store.root);
    FolderCheck check(today, practiceRows);
    check.checkFolders(store);
    check.checkSettings(store.root);
    for (const std::string& mac : store.macs()) check.checkMarker(store.root / mac);
    for (const Store& part : store.readParts()) check.checkPart(part, ownerOf(part, store, hasOwn));
    if (hasOwn) check.checkMissingRollups(store);
    if (hasOwn) check.checkWaiting(store);
    return check.take();
}

}  // namespace tapcore

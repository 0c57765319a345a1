// Month rollups: the members of Store that read and make them.

#include <algorithm>
#include <map>
#include <set>

#include "core/files/data_listing.h"
#include "core/files/file_copies.h"
#include "core/files/folder_error.h"
#include "core/files/folder_names.h"
#include "core/files/outdated_months.h"
#include "core/files/store.h"
#include "core/foundation/fatal.h"
#include "core/foundation/file_io.h"
#include "core/foundation/utf8.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

/// A rollup and the file it was read from.
struct StoredRollup {
    fs::path path;
    MonthRollup rollup;
};

/// The rollup in one folder. Of two formats the one written counts: they are one rollup. One whose counts
/// cannot be added up reads as empty: it is made again from its days.
std::optional<StoredRollup> storedAmong(const std::vector<FileCopy>& copies, FileProblems* problems) {
    for (const FileCopy& copy : copies) {
        if (copy.file.status == FileRead::Status::read) {
            const bool fits = countsFit(copy.file.text);
            if (!fits) report(problems, copy.path, std::string(tooLarge));
            if (!fits) return StoredRollup{copy.path, {}};
            return StoredRollup{copy.path, MonthRollup(repairedUtf8(copy.file.text))};
        }
        report(problems, copy.path, copy.file.error.message());
    }
    return std::nullopt;
}

std::vector<FileCopy> copiesOf(const Store& part, std::string_view month) {
    return readCopies(part.base() / monthsFolder, month, part.format);
}

std::optional<StoredRollup> readStored(const Store& part, std::string_view month, FileProblems* problems) {
    return storedAmong(copiesOf(part, month), problems);
}

/// The rollup in one folder, for replacing it: throws filesystem_error with the path when a copy of it cannot
/// be read.
std::optional<StoredRollup> readWhole(const Store& own, std::string_view month) {
    const std::vector<FileCopy> copies = copiesOf(own, month);
    for (const FileCopy& copy : copies)
        if (copy.file.status == FileRead::Status::unreadable) refuse(copy.path, copy.file.error);
    return storedAmong(copies, nullptr);
}

/// The days before today that a folder has files of, by month, each with those files.
using FilesByDay = std::map<Day, std::vector<ListedFile>>;
using FilesByMonth = std::map<std::string, FilesByDay, std::less<>>;

constexpr std::size_t monthLength = std::string_view("2026-09").size();

FilesByMonth filesBefore(const Day& today, const fs::path& folder) {
    FilesByMonth months;
    for (ListedFile& file : dataFiles(folder)) {
        if (!isDayName(file.name)) continue;
        if (const auto day = Day::parse(file.name); *day < today)
            months[file.name.substr(0, monthLength)][*day].push_back(std::move(file));
    }
    return months;
}

std::vector<Day> daysListedIn(const MonthRollup& rollup) {
    std::vector<Day> days;
    for (const MonthRollup::DayLine& line : rollup.days) days.push_back(line.day);
    return days;
}

bool lists(const MonthRollup& rollup, const FilesByDay& files) {
    return std::equal(
        rollup.days.begin(), rollup.days.end(), files.begin(), files.end(),
        [](const MonthRollup::DayLine& line, const auto& item) { return line.day == item.first; });
}

/// Whether a file may have changed since its month was summed: one that does not say when it was written may.
/// A placeholder says nothing, and its file was summed when it was here.
bool mayBeNewer(const ListedFile& file, const FolderTimes& days, std::chrono::nanoseconds rollup) {
    if (!file.isHere) return false;
    const auto written = days.lastWritten(file.fileName());
    return !written || *written > rollup;
}

bool hasNewer(const FilesByDay& files, const FolderTimes& days, std::chrono::nanoseconds rollup) {
    for (const auto& [day, copies] : files)
        for (const ListedFile& file : copies)
            if (mayBeNewer(file, days, rollup)) return true;
    return false;
}

/// Which of this machine's rollups agree with their days.
class CurrentRollups {
  public:
    explicit CurrentRollups(const Store& own)
        : own_(own), days_(own.base() / daysFolder), months_(own.base() / monthsFolder) {}

    bool have(std::string_view month, const FilesByDay& files) const {
        const auto stored = readStored(own_, month, nullptr);
        if (!stored || !lists(stored->rollup, files)) return false;
        const auto written = months_.lastWritten(stored->path.filename().string());
        return written && !hasNewer(files, days_, *written);
    }

  private:
    const Store& own_;
    FolderTimes days_;
    FolderTimes months_;
};

void removeRollup(const Store& own, std::string_view month) {
    for (const FileFormat format : FileFormat::allCases)
        removeFile(own.base() / monthsFolder / copyName(month, format.fileExtension()));
}

/// When a rollup is to say that it was written; nothing for now.
using LastWritten = std::optional<std::chrono::nanoseconds>;

Written writeRollup(const Store& own, std::string_view month, const MonthRollup& rollup,
                    LastWritten lastWritten = {}) {
    const fs::path path = own.urlForMonth(month);
    return writeFile(path, rollup.text(own.format, month), lastWritten).then([&] {
        own.removeOthers(monthsFolder, month, path);
    });
}

void replaceRollup(const Store& own, std::string_view month, const MonthRollup& rollup,
                   LastWritten lastWritten = {}) {
    if (rollup.days.empty()) removeRollup(own, month);
    else
        writeRollup(own, month, rollup, lastWritten).requireSafe();  // or what was to be forgotten may remain
    removeFile(own.base() / monthsFolder / copyName(month, "tsv"));
}

/// Days of a month as they were read from disk: each once, since what is read a second time may be another
/// file, or none.
struct DaysRead {
    struct Unread {
        fs::path path;
        std::error_code why;

        bool isMissing() const { return why == std::errc::no_such_file_or_directory; }
        bool isAway() const { return why == FolderError::notHereYet; }
    };

    std::map<Day, std::vector<FileCopy>> copies;  ///< of the days that could be read
    std::vector<Unread> unread;
    CountSum counts;

    bool canBeSummed() const { return unread.empty() && counts.fits(); }
};

DaysRead readDays(const Store& own, const std::vector<Day>& days) {
    DaysRead read;
    for (const Day& day : days) {
        auto copies = readCopies(own.base() / daysFolder, day.description(), own.format);
        const auto failed = std::find_if(copies.begin(), copies.end(), [](const FileCopy& copy) {
            return copy.file.status != FileRead::Status::read;
        });
        if (copies.empty())
            read.unread.push_back({own.url(day), std::make_error_code(std::errc::no_such_file_or_directory)});
        if (failed != copies.end()) read.unread.push_back({failed->path, failed->file.error});
        if (copies.empty() || failed != copies.end()) continue;
        addNumbers(read.counts, copies);
        read.copies.emplace(day, std::move(copies));
    }
    return read;
}

MonthRollup sumOf(const DaysRead& days, const Store& own) {
    const std::string place = own.base().string();
    const FatalContext context("adding up the days in", place);
    std::map<Day, DayFile> files;
    for (const auto& [day, copies] : days.copies) mergeCopies(files[day], copies, nullptr);
    return MonthRollup(files);
}

bool rebuild(const Store& own, std::string_view month, const FilesByDay& files, FileProblems* problems) {
    std::vector<Day> days;
    for (const auto& item : files) days.push_back(item.first);
    const DaysRead read = readDays(own, days);
    for (const DaysRead::Unread& day : read.unread)
        report(problems, day.path, std::string(month) + " is not summed without it: " + day.why.message());
    if (!read.counts.fits()) report(problems, own.urlForMonth(month), std::string(tooLarge));
    if (!read.canBeSummed()) return false;
    own.warnUnlessSafe(writeRollup(own, month, sumOf(read, own)));
    return true;
}

FilesByDay filesOf(std::string_view month, FilesByMonth&& months) {
    const auto found = months.find(month);
    return found == months.end() ? FilesByDay{} : std::move(found->second);
}

/// Whether one of the days that a rollup lists may have been written after it.
bool isOlderThanADay(const StoredRollup& stored, FilesByDay files, const FolderTimes& days,
                     const FolderTimes& months) {
    const std::vector<Day> listed = daysListedIn(stored.rollup);
    std::erase_if(files, [&](const auto& item) {
        return std::find(listed.begin(), listed.end(), item.first) == listed.end();
    });
    const auto written = months.lastWritten(stored.path.filename().string());
    return written && hasNewer(files, days, *written);
}

}  // namespace

std::map<std::string, std::chrono::nanoseconds, std::less<>> outdatedMonths(const Store& own) {
    const Day afterAll(10'000, 1, 1);
    const FolderTimes days(own.base() / daysFolder);
    const FolderTimes months(own.base() / monthsFolder);
    std::map<std::string, std::chrono::nanoseconds, std::less<>> outdated;
    for (const auto& [month, files] : filesBefore(afterAll, own.base() / daysFolder)) {
        const auto stored = readStored(own, month, nullptr);
        if (!stored || !isOlderThanADay(*stored, files, days, months)) continue;
        const auto written = months.lastWritten(stored->path.filename().string());
        if (written && !readDays(own, daysListedIn(stored->rollup)).canBeSummed())
            outdated.emplace(month, *written);
    }
    return outdated;
}

std::optional<MonthRollup> Store::readRollup(std::string_view month, FileProblems* problems) const {
    std::optional<MonthRollup> sum;
    for (const Store& part : readParts()) {
        auto stored = readStored(part, month, problems);
        if (stored) sum = sum ? sum->merged(stored->rollup) : std::move(stored->rollup);
    }
    return sum;
}

bool Store::rebuildRollup(std::string_view month, const Day& today, FileProblems* problems) const {
    if (!isMonthName(month)) return false;
    const Store own = single(base());
    const FilesByDay files = filesOf(month, filesBefore(today, own.root / daysFolder));
    if (!files.empty()) return rebuild(own, month, files, problems);
    removeRollup(own, month);
    return true;
}

bool Store::isOutOfDate(std::string_view month, const Day& today) const {
    if (!isMonthName(month)) return false;
    const Store own = single(base());
    const FilesByDay files = filesOf(month, filesBefore(today, own.root / daysFolder));
    return files.empty() ? readStored(own, month, nullptr).has_value()
                         : !CurrentRollups(own).have(month, files);
}

bool Store::refreshRollups(const Day& today, const Progress& progress, FileProblems* problems) const {
    const Store own = single(base());
    const FilesByMonth months = filesBefore(today, own.root / daysFolder);
    const std::vector<ListedFile> stored = dataFiles(own.root / monthsFolder);
    const CurrentRollups current(own);
    std::size_t done = 0;
    for (const auto& [month, files] : months) {
        if (!shouldContinue(progress, done++, months.size())) return false;
        if (!current.have(month, files)) rebuild(own, month, files, problems);
    }
    for (const ListedFile& file : stored)
        if (isMonthName(file.name) && !months.contains(file.name)) removeRollup(own, file.name);
    return true;
}

void Store::changeRollup(std::string_view month, const std::function<void(MonthRollup&)>& change,
                         std::optional<std::chrono::nanoseconds> lastWritten) const {
    const Store own = single(base());
    auto stored = readWhole(own, month);
    if (!stored) return;
    // What is written now is newer than the days, and would hide that one of them has changed.
    const DaysRead days = readDays(own, daysListedIn(stored->rollup));
    for (const DaysRead::Unread& day : days.unread)
        if (!day.isMissing() && !day.isAway()) refuse(day.path, day.why);
    if (days.canBeSummed()) stored->rollup = sumOf(days, own);
    change(stored->rollup);
    replaceRollup(own, month, stored->rollup, lastWritten);
}

void Store::takeOutOfRollup(const Day& day) const {
    const Store own = single(base());
    const std::string month = day.monthName();
    if (!isMonthName(month)) return;
    const auto stored = readWhole(own, month);
    if (!stored) return;
    std::vector<Day> others = daysListedIn(stored->rollup);
    std::erase(others, day);
    const DaysRead days = readDays(own, others);
    for (const DaysRead::Unread& other : days.unread)
        if (!other.isMissing()) refuse(other.path, other.why);
    // Days that cannot be added up have no month until that is repaired.
    replaceRollup(own, month, days.counts.fits() ? sumOf(days, own) : MonthRollup());
}

}  // namespace tapcore

// Month rollups: the members of Store that read and make them.

#include <algorithm>
#include <map>
#include <set>

#include "core/files/data_listing.h"
#include "core/files/file_copies.h"
#include "core/files/folder_error.h"
#include "core/files/folder_names.h"
#include "core/files/store.h"
#include "core/foundation/characters.h"
#include "core/foundation/fatal.h"
#include "core/foundation/file_io.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

/// A rollup and the file it was read from.
struct StoredRollup {
    fs::path path;
    MonthRollup rollup;
};

/// The rollup in one folder. Of two formats the one written counts: they are one rollup. One whose counts
/// cannot be added up reads as empty: it is made anew from its days.
std::optional<StoredRollup> readStored(const Store& part, std::string_view month, FileProblems* problems) {
    for (const FileCopy& copy : readCopies(part.base() / monthsFolder, month, part.format)) {
        if (copy.file.status == FileRead::Status::read) {
            const bool fits = countsFit(copy.file.text);
            if (!fits && problems) problems->push_back({copy.path, 0, std::string(tooLarge)});
            if (!fits) return StoredRollup{copy.path, {}};
            return StoredRollup{copy.path, MonthRollup(repairedUtf8(copy.file.text))};
        }
        if (problems) problems->push_back({copy.path, 0, copy.file.error.message()});
    }
    return std::nullopt;
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

bool hasNewer(const FilesByDay& files, const FolderTimes& days, std::chrono::nanoseconds rollup) {
    for (const auto& [day, copies] : files)
        for (const ListedFile& file : copies)
            if (const auto written = days.lastWritten(file.fileName()); written && *written > rollup)
                return true;
    return false;
}

/// Which of this machine's rollups stand as their days do.
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

bool allHere(const FilesByDay& files) {
    return std::all_of(files.begin(), files.end(), [](const auto& item) {
        return std::all_of(item.second.begin(), item.second.end(),
                           [](const ListedFile& file) { return file.isHere; });
    });
}

void removeRollup(const Store& own, std::string_view month) {
    for (const FileFormat format : FileFormat::allCases)
        removeFile(own.base() / monthsFolder / copyName(month, format.fileExtension()));
}

Written writeRollup(const Store& own, std::string_view month, const MonthRollup& rollup) {
    const fs::path path = own.urlForMonth(month);
    return Store::write(rollup.text(own.format, month), path).then([&] {
        own.removeOthers(monthsFolder, month, path);
    });
}

bool isReadable(const Store& own, const Day& day) {
    const auto copies = readCopies(own.base() / daysFolder, day.description(), own.format);
    return !copies.empty() && std::all_of(copies.begin(), copies.end(), [](const FileCopy& copy) {
        return copy.file.status == FileRead::Status::read;
    });
}

/// The sum of days; nothing when one of them has no file that can be read.
std::optional<MonthRollup> sumOf(const Store& own, const std::vector<Day>& days) {
    std::map<Day, DayFile> files;
    for (const Day& day : days) {
        if (!isReadable(own, day)) return std::nullopt;
        files.emplace(day, own.readOwn(day));
    }
    const FatalContext context("adding up the days in", own.base().native());
    return MonthRollup(files);
}

/// Whether the counts of days can be added up.
bool countsFit(const Store& own, const std::vector<Day>& days) {
    CountSum sum;
    for (const Day& day : days)
        addNumbers(sum, readCopies(own.base() / daysFolder, day.description(), own.format));
    return sum.fits();
}

bool rebuild(const Store& own, std::string_view month, const FilesByDay& files) {
    if (!allHere(files)) return false;
    std::vector<Day> days;
    for (const auto& item : files) days.push_back(item.first);
    const auto rollup = sumOf(own, days);
    if (rollup) own.settle(writeRollup(own, month, *rollup));
    return rollup.has_value();
}

FilesByDay filesOf(std::string_view month, FilesByMonth&& months) {
    const auto found = months.find(month);
    return found == months.end() ? FilesByDay{} : std::move(found->second);
}

}  // namespace

std::optional<MonthRollup> Store::readRollup(std::string_view month, FileProblems* problems) const {
    std::optional<MonthRollup> sum;
    for (const Store& part : readParts()) {
        auto stored = readStored(part, month, problems);
        if (stored) sum = sum ? sum->merged(stored->rollup) : std::move(stored->rollup);
    }
    return sum;
}

bool Store::rebuildRollup(std::string_view month, const Day& today) const {
    const Store own = single(base());
    const FilesByDay files = filesOf(month, filesBefore(today, own.root / daysFolder));
    if (!files.empty()) return rebuild(own, month, files);
    removeRollup(own, month);
    return true;
}

bool Store::isOutOfDate(std::string_view month, const Day& today) const {
    const Store own = single(base());
    const FilesByDay files = filesOf(month, filesBefore(today, own.root / daysFolder));
    return files.empty() ? readStored(own, month, nullptr).has_value()
                         : !CurrentRollups(own).have(month, files);
}

bool Store::refreshRollups(const Day& today, const Progress& progress) const {
    const Store own = single(base());
    const FilesByMonth months = filesBefore(today, own.root / daysFolder);
    const CurrentRollups current(own);
    std::size_t done = 0;
    for (const auto& [month, files] : months) {
        if (!goesOn(progress, done++, months.size())) return false;
        if (!current.have(month, files)) rebuild(own, month, files);
    }
    for (const std::string& name : own.names(monthsFolder))
        if (isMonthName(name) && !months.contains(name)) removeRollup(own, name);
    return true;
}

void Store::changeRollup(std::string_view month, const std::function<void(MonthRollup&)>& change) const {
    if (!isMonthName(month)) return;
    const Store own = single(base());
    for (const FileCopy& copy : readCopies(own.root / monthsFolder, month, format))
        if (copy.file.status == FileRead::Status::unreadable) refuse(copy.path, copy.file.error);
    auto stored = readStored(own, month, nullptr);
    if (!stored) return;
    // What is written now is newer than the days, and would hide that one of them has changed.
    const std::vector<Day> listed = daysListedIn(stored->rollup);
    if (countsFit(own, listed))
        if (auto anew = sumOf(own, listed)) stored->rollup = std::move(*anew);
    change(stored->rollup);
    if (stored->rollup.days.empty()) removeRollup(own, month);
    else writeRollup(own, month, stored->rollup).requireSafe();  // or what was to be forgotten may remain
    removeFile(own.root / monthsFolder / copyName(month, "tsv"));
}

}  // namespace tapcore

// Changing what is stored: the members of Store that convert, forget and clear.

#include <algorithm>
#include <map>

#include "core/files/data_listing.h"
#include "core/files/file_copies.h"
#include "core/files/folder_error.h"
#include "core/files/folder_names.h"
#include "core/files/store.h"
#include "core/foundation/file_io.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

/// Refuses to change a folder in part: what iCloud Drive has still to bring would stay as it is.
void requireAllHere(const fs::path& folder) {
    for (const ListedFile& file : allDataFiles(folder))
        if (isOnlyInCloud(folder / file.fileName()))
            refuse(folder / file.fileName(), FolderError::notHereYet);
}

void removeCopies(const fs::path& folder, std::string_view name) {
    for (const std::string_view extension : FileFormat::knownExtensions) {
        const fs::path path = folder / copyName(name, extension);
        removeFile(path);
        removeFile(cloudPlaceholder(path));
    }
    removeTraces(folder, name);
}

bool isAnyDayName(std::string_view name) { return isDayName(name) || isKeptDayName(name); }
bool isAnyName(std::string_view) { return true; }
using IsData = bool (*)(std::string_view name);

/// The names of the data files in a folder, those of the older layout included.
std::set<std::string> namesOf(const fs::path& folder, IsData isData) {
    std::set<std::string> names;
    for (ListedFile& file : allDataFiles(folder))
        if (isData(file.name)) names.insert(std::move(file.name));
    return names;
}

/// Removes the data files of a folder, and nothing that is no data file.
void clearFolder(const fs::path& folder, IsData isData) {
    const auto names = namesOf(folder, isData);
    for (const std::string& name : names) removeCopies(folder, name);
    if (!names.empty()) flushFolder(folder).requireSafe();
}

/// Removes the files of days, or of one, that were kept as they were for the lines that a rewrite left out.
void removeKept(const fs::path& folder, std::string_view day = "") {
    for (const std::string& name : namesOf(folder, isKeptDayName))
        if (name.starts_with(day)) removeCopies(folder, name);
}

/// The names in a folder of data files that are here in the format not written.
std::set<std::string> namesToConvert(const fs::path& base, std::string_view folder, FileFormat format) {
    const IsData isData = folder == monthsFolder ? isMonthName : isDayName;
    std::set<std::string> names;
    for (const ListedFile& file : dataFiles(base / folder))
        if (file.isHere && file.extension != format.fileExtension() && isData(file.name))
            names.insert(file.name);
    return names;
}

}  // namespace

bool Store::needsConversion() const {
    return std::any_of(dataFolders.begin(), dataFolders.end(), [&](std::string_view folder) {
        return !namesToConvert(base(), folder, format).empty();
    });
}

bool Store::convert(const Progress& progress) const {
    std::vector<std::pair<std::string_view, std::string>> files;
    for (const std::string_view folder : dataFolders)
        for (const std::string& name : namesToConvert(base(), folder, format))
            files.emplace_back(folder, name);
    for (std::size_t done = 0; done < files.size(); ++done) {
        if (!goesOn(progress, done, files.size())) return false;
        convertFile(files[done].first, files[done].second);
    }
    for (const std::string_view folder : dataFolders) removeOldNotes(base() / folder);
    return true;
}

void Store::convertFile(std::string_view folder, const std::string& name) const {
    if (folder == daysFolder) change(*Day::parse(name), LeftOut::kept, [](DayFile&) {});
    if (folder == monthsFolder) changeRollup(name, [](MonthRollup&) {});
    if (folder == practiceFolder) convertPractice(name);
}

void Store::clearDay(const Day& day) const {
    const Store own = single(base());
    changeRollup(day.monthName(), [&](MonthRollup& rollup) {
        CountSum counts;
        std::map<Day, DayFile> others;
        for (const MonthRollup::DayLine& line : rollup.days) {
            if (line.day == day) continue;
            addNumbers(counts,
                       readWholeCopies(own.root / daysFolder, line.day.description(), format, fetch_));
            if (counts.fits()) others.emplace(line.day, own.read(line.day));
        }
        if (!counts.fits()) others.clear();  // and the rollup goes, until its days can be added up
        rollup = MonthRollup(others);
    });
    removeCopies(own.root / daysFolder, day.description());
    removeKept(own.root / daysFolder, day.description());
    if (isThere(own.root / daysFolder)) flushFolder(own.root / daysFolder).requireSafe();
}

bool Store::resetHeatmap(const Progress& progress) const {
    return forget([](DayFile& file) { file.tally.forgetKeys(); },
                  [](MonthRollup& rollup) { rollup.keys.clear(); }, progress);
}

bool Store::resetShortcuts(const Progress& progress) const {
    return forget([](DayFile& file) { file.tally.forgetChords(); },
                  [](MonthRollup& rollup) { rollup.chords.clear(); }, progress);
}

bool Store::forget(const std::function<void(DayFile&)>& inDay,
                   const std::function<void(MonthRollup&)>& inMonth, const Progress& progress) const {
    const fs::path days = base() / daysFolder;
    const fs::path months = base() / monthsFolder;
    requireAllHere(days);
    requireAllHere(months);
    const auto dayNames = namesOf(days, isDayName);
    for (const std::string& name : dayNames)
        readWholeCopies(days, name, format, fetch_);  // or none is changed
    std::size_t done = 0;
    for (const std::string& name : dayNames) {
        if (!goesOn(progress, done++, dayNames.size())) return false;
        change(*Day::parse(name), LeftOut::dropped, inDay);
    }
    removeKept(days);
    for (const std::string& name : namesOf(months, isMonthName)) changeRollup(name, inMonth);
    return true;
}

void Store::resetPractice() const { clearFolder(base() / practiceFolder, isAnyDayName); }

void Store::clearCounts() const {
    clearFolder(base() / daysFolder, isAnyDayName);
    clearFolder(base() / monthsFolder, isMonthName);
}

void Store::clearAll() const {
    clearCounts();
    resetPractice();
    clearFolder(base() / reportsFolder, isAnyName);
    clearFolder(base() / assistantFolder, isAnyName);
    clearFolder(base() / assistantFolder / "history", isAnyName);
}

}  // namespace tapcore

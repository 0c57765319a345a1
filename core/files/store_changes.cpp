// Changing what is stored: the members of Store that convert, forget and clear.

#include <algorithm>

#include "core/files/counted_names.h"
#include "core/files/data_listing.h"
#include "core/files/file_copies.h"
#include "core/files/folder_error.h"
#include "core/files/folder_names.h"
#include "core/files/outdated_months.h"
#include "core/files/row_import.h"
#include "core/files/store.h"
#include "core/files/taken_note.h"
#include "core/foundation/file_io.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

/// Refuses to change a folder in part: what is not here yet would stay as it is.
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

/// Data files to be removed, found before the first of them is: a folder that cannot be listed stops it all.
struct FilesToRemove {
    fs::path folder;
    std::set<std::string> names;

    void remove() const {
        for (const std::string& name : names) removeCopies(folder, name);
        if (!names.empty() && existsOrThrow(folder)) flushFolder(folder).requireSafe();
    }
};

FilesToRemove filesToRemove(const fs::path& folder, IsData isData) {
    return {folder, namesOf(folder, isData)};
}

void remove(const std::vector<FilesToRemove>& all) {
    for (const FilesToRemove& files : all) files.remove();
}

/// The names of data files that are here in the format not written, of those in one of the data folders.
std::set<std::string> namesToConvert(const std::vector<ListedFile>& files, std::string_view folder,
                                     FileFormat format) {
    std::set<std::string> names;
    for (const ListedFile& file : files)
        if (file.isHere && file.extension != format.fileExtension() && isCountedName(folder, file.name))
            names.insert(file.name);
    return names;
}

}  // namespace

bool Store::needsConversion(FileProblems* problems) const {
    FileProblems unlisted;
    bool needs = false;
    for (const std::string_view folder : dataFolders)
        needs |= !namesToConvert(dataFiles(base() / folder, unlisted), folder, format).empty();
    report(problems, unlisted);
    return needs;
}

bool Store::convert(const Progress& progress) const {
    std::vector<std::pair<std::string_view, std::string>> files;
    for (const std::string_view folder : dataFolders)
        for (const std::string& name : namesToConvert(dataFiles(base() / folder), folder, format))
            files.emplace_back(folder, name);
    settleWaiting();                              // or the notes that are removed below would be missed
    const auto outdated = outdatedMonths(*this);  // before their days are written, which makes those newer
    for (std::size_t done = 0; done < files.size(); ++done) {
        if (!shouldContinue(progress, done, files.size())) return false;
        const auto& [folder, name] = files[done];
        const auto month = folder == monthsFolder ? outdated.find(name) : outdated.end();
        convertFile(folder, name, month == outdated.end() ? std::nullopt : std::optional(month->second));
    }
    for (const std::string_view folder : dataFolders) removeOldNotes(base() / folder);
    return true;
}

void Store::convertFile(std::string_view folder, const std::string& name,
                        std::optional<std::chrono::nanoseconds> lastWritten) const {
    if (folder == daysFolder) change(*Day::parse(name), UnusedLines::kept, [](DayFile&) {});
    if (folder == monthsFolder)
        changeRollup(
            name, [](MonthRollup&) {}, lastWritten);
    if (folder == practiceFolder) convertPractice(name);
}

void Store::clearDay(const Day& day) const {
    const std::string name = day.description();
    FilesToRemove files = filesToRemove(base() / daysFolder, isKeptDayName);
    std::erase_if(files.names, [&](const std::string& kept) { return !kept.starts_with(name); });
    files.names.insert(name);
    takeOutOfRollup(day);
    clearWaiting(name);
    TakenNote::forgetDay(base(), name);
    forgetImport(*this, day);
    files.remove();
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
    finishImport(*this);  // or its rows would bring back what is forgotten
    const auto dayNames = namesOf(days, isDayName);
    const auto monthNames = namesOf(months, isMonthName);
    const FilesToRemove kept = filesToRemove(days, isKeptDayName);
    std::vector<std::pair<Day, std::vector<FileCopy>>> read;  // all of them, or none is changed
    for (const std::string& name : dayNames)
        read.emplace_back(*Day::parse(name), copiesToChange(*Day::parse(name), {}));
    for (const WaitingHour& hour : waitingHours()) (void)readWaiting(hour);
    for (std::size_t done = 0; done < read.size(); ++done) {
        if (!shouldContinue(progress, done, read.size())) return false;
        changeRead(read[done].first, read[done].second, UnusedLines::dropped, inDay);
    }
    forgetWaiting(inDay);
    kept.remove();
    for (const std::string& name : monthNames) changeRollup(name, inMonth);
    return true;
}

void Store::resetPractice() const { filesToRemove(base() / practiceFolder, isAnyDayName).remove(); }

void Store::clearCounts() const {
    const std::vector<FilesToRemove> counts = {filesToRemove(base() / daysFolder, isAnyDayName),
                                               filesToRemove(base() / monthsFolder, isMonthName)};
    clearWaiting("");
    TakenNote::forget(base());
    removeFile(importNote(base()));
    remove(counts);
}

void Store::clearAll() const {
    const std::vector<FilesToRemove> all = {
        filesToRemove(base() / daysFolder, isAnyDayName),
        filesToRemove(base() / monthsFolder, isMonthName),
        filesToRemove(base() / practiceFolder, isAnyDayName),
        filesToRemove(base() / reportsFolder, isAnyName),
        filesToRemove(base() / assistantFolder, isAnyName),
        filesToRemove(base() / assistantFolder / historyFolder, isAnyName)};
    clearWaiting("");
    TakenNote::forget(base());
    removeFile(importNote(base()));
    remove(all);
}

}  // namespace tapcore

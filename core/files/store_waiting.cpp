// Hours that wait outside of the folder: the members of Store that read, add, settle and forget them.

#include <algorithm>

#include "core/files/count_sum.h"
#include "core/files/file_copies.h"
#include "core/files/folder_error.h"
#include "core/files/folder_names.h"
#include "core/files/store.h"
#include "core/foundation/file_io.h"
#include "core/foundation/utf8.h"

namespace tapcore {

namespace fs = std::filesystem;

std::vector<WaitingHour> Store::waitingHours() const {
    return waiting_ ? tapcore::waitingHours(*waiting_) : std::vector<WaitingHour>();
}

std::vector<WaitingHour> Store::waitingHours(FileProblems* problems) const {
    FileProblems unlisted;
    std::vector<WaitingHour> hours;
    if (waiting_) hours = tapcore::waitingHours(*waiting_, unlisted);
    report(problems, unlisted);
    return hours;
}

fs::path Store::url(const WaitingHour& hour) const { return waitingFile(waiting_.value(), hour); }

std::vector<fs::path> Store::waitingFiles(const Day& day, const std::vector<WaitingHour>& hours) const {
    std::vector<fs::path> files;
    for (const WaitingHour& hour : hours)
        if (hour.day == day) files.push_back(url(hour));
    return files;
}

std::vector<FileCopy> Store::copiesOf(const Day& day, const std::vector<WaitingHour>& waiting,
                                      const DataListing* listing) const {
    return readCopies(base() / daysFolder, day.description(), format, fetch_, listing,
                      waitingFiles(day, waiting));
}

std::vector<FileCopy> Store::copiesToChange(const Day& day, const std::vector<WaitingHour>& takenIn) const {
    const auto isAmong = [](const std::vector<fs::path>& files, const fs::path& file) {
        return std::find(files.begin(), files.end(), file) != files.end();
    };
    const auto waiting = waitingFiles(day, waitingHours());
    const auto taken = waitingFiles(day, takenIn);
    auto copies = readWholeCopies(base() / daysFolder, day.description(), format, fetch_, waiting);
    std::erase_if(copies, [&](const FileCopy& copy) {
        return !copy.isSuperseded && isAmong(waiting, copy.path) && !isAmong(taken, copy.path);
    });
    return copies;
}

void Store::settle(const Day& day) const {
    auto copies = copiesOf(day, waitingHours());
    removeSuperseded(copies, base() / daysFolder, day.description());
}

void Store::settleWaiting() const {
    std::set<Day> days;
    for (const WaitingHour& hour : waitingHours()) days.insert(hour.day);
    for (const Day& day : days) settle(day);
    removeOldNotes(base() / daysFolder);
}

DayFile Store::readWaiting(const WaitingHour& hour) const {
    const FileRead file = readStoredFile(url(hour));
    if (file.status == FileRead::Status::unreadable) refuse(url(hour), file.error);
    if (firstInvalidUtf8(file.text) != std::string_view::npos) refuse(url(hour), FolderError::notUtf8);
    if (!countsFit(file.text)) refuse(url(hour), FolderError::countsTooLarge);
    return DayFile(file.text);
}

void Store::addWaiting(const WaitingHour& hour, const DayFile& counts) const {
    settle(hour.day);
    requireFits(hour.day, counts.tally);
    DayFile sum = readWaiting(hour);
    sum.merge(counts.tally, counts.peakPerMinute, counts.pausedMinutes);
    if (counts.board) sum.board = counts.board;
    if (counts.layout) sum.layout = counts.layout;
    warnUnlessSafe(writeFile(url(hour), sum.text(FileFormat::org, hour.day)));
}

void Store::forgetWaiting(const std::function<void(DayFile&)>& forget) const {
    for (const WaitingHour& hour : waitingHours()) {
        DayFile counts = readWaiting(hour);
        forget(counts);
        writeFile(url(hour), counts.text(FileFormat::org, hour.day)).requireSafe();
    }
}

/// With what was kept of them as it was.
void Store::clearWaiting(std::string_view day) const {
    if (!waiting_) return;
    bool isAny = false;
    for (const ListedFile& file : dataFiles(*waiting_))
        if (file.name.starts_with(day)) isAny |= removeFile(*waiting_ / file.fileName());
    if (isAny) flushFolder(*waiting_).requireSafe();
}

}  // namespace tapcore

#include "core/files/row_import.h"

#include <algorithm>
#include <utility>

#include "core/files/count_sum.h"
#include "core/files/file_copies.h"
#include "core/files/folder_error.h"
#include "core/files/folder_names.h"
#include "core/foundation/digest.h"
#include "core/foundation/file_io.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;
using Days = std::map<MachineDay, DayFile>;

constexpr std::string_view markStart = "import-";

/// A machine's name as a cell of a table.
std::string cellOf(const std::string& machine) {
    std::string cell = machine.empty() ? "-" : machine;
    for (char& c : cell)
        if (c == '|' || static_cast<unsigned char>(c) < ' ') c = '?';
    return cell;
}

std::string textOf(const Days& days) {
    RowText text(RowForm::csv);
    for (const auto& [at, file] : days) {
        text.begin(at.machine, at.day);
        forEachRow(file, [&](const CountRow& row) { text.add(row); });
    }
    return text.text();
}

/// The row of the Day table that says that a day's rows were taken.
std::pair<std::string, std::string> markOf(const MachineDay& at, const DayFile& rows) {
    return {std::string(markStart) + hexDigest(textOf({{at, rows}})), cellOf(at.machine)};
}

bool hasOtherMark(const DayFile& day, const std::string& machine) {
    return std::any_of(day.otherMeta.begin(), day.otherMeta.end(), [&](const auto& row) {
        return row.first.starts_with(markStart) && row.second == machine;
    });
}

bool hasSameCounts(const DayFile& a, const DayFile& b) {
    return a.tally == b.tally && a.peakPerMinute == b.peakPerMinute && a.pausedMinutes == b.pausedMinutes;
}

/// One day as the folder holds it.
struct Held {
    std::map<std::string, DayFile> machines;  ///< by the name that an export gives the part
    DayFile all;
    CountSum sum;
};

Held heldOn(const Store& store, const std::vector<Store>& parts, const Day& day, FileProblems& unread) {
    Held held;
    store.addNumbers(held.sum, day);
    if (!held.sum.fits()) {
        unread.push_back({store.url(day), 0, std::string(tooLarge)});
        return held;
    }
    for (const Store& part : parts) {
        DayFile file = part.readOwn(day, &unread);
        held.all.merge(file);
        held.machines[part.root == store.root ? "" : part.root.filename().string()] = std::move(file);
    }
    return held;
}

enum class Here { no, same, differing };

Here whatIsHere(const Held& held, const MachineDay& at, const DayFile& rows) {
    const auto [mark, machine] = markOf(at, rows);
    if (held.all.otherMeta.contains(mark)) return Here::same;
    for (const auto& [name, file] : held.machines)
        if (hasSameCounts(file, rows)) return Here::same;
    const auto own = held.machines.find(at.machine);
    const bool isCountedHere =
        !at.machine.empty() && own != held.machines.end() && !hasSameCounts(own->second, DayFile());
    return isCountedHere || hasOtherMark(held.all, machine) ? Here::differing : Here::no;
}

void requireFits(Held& held, const Store& store, const MachineDay& at, const DayFile& rows,
                 FileProblems& unread) {
    held.sum.add(rows.text(FileFormat::org, at.day));
    if (!held.sum.fits()) unread.push_back({store.url(at.day), 0, std::string(tooLarge)});
}

/// What waits to be added; nothing without a note.
Days waitingDays(const fs::path& note) {
    const FileRead file = readStoredFile(note);
    if (file.status == FileRead::Status::unreadable)
        throw fs::filesystem_error("cannot read", note, file.error);
    RowsRead rows = readRows(file.text, RowForm::csv);
    if (rows.unusable > 0) refuse(note, FolderError::notRows);
    return std::move(rows.days);
}

/// Adds those rows of one day that it has not taken yet.
void addToDay(const Store& store, const Day& day, Days missing) {
    const DayFile own = store.readOwn(day);
    std::erase_if(missing, [&](const auto& item) {
        return own.otherMeta.contains(markOf(item.first, item.second).first);
    });
    if (missing.empty()) return store.settle(day);
    for (const auto& item : missing) store.requireFits(day, item.second.tally);
    store.change(day, Store::UnusedLines::kept, [&](DayFile& file) {
        for (const auto& [at, rows] : missing) {
            file.merge(rows);
            file.otherMeta.insert(markOf(at, rows));
        }
    });
}

void removeNote(const Store& store, const fs::path& note) {
    if (removeFile(note)) store.warnUnlessSafe(flushFolder(store.base()));
}

}  // namespace

RowImport planned(const Store& store, const Days& rows, Differing rule) {
    RowImport plan;
    const std::vector<Store> parts = store.readParts(&plan.unread);
    Held held;
    std::optional<Day> day;
    for (const auto& [at, counts] : rows) {
        if (day != at.day) held = heldOn(store, parts, at.day, plan.unread);
        day = at.day;
        const Here here = whatIsHere(held, at, counts);
        if (here == Here::same) plan.known.push_back(at);
        else if (here == Here::differing && rule != Differing::added) plan.differing.push_back(at);
        else {
            requireFits(held, store, at, counts, plan.unread);
            plan.added.emplace(at, counts);
        }
    }
    return plan;
}

bool addRows(const Store& store, const RowImport& plan, const Progress& progress) {
    if (!finishImport(store, progress)) return false;  // its rows are in the note that is written now
    for (const MachineDay& at : plan.known) store.settle(at.day);
    removeOldNotes(store.base() / daysFolder);
    if (plan.added.empty()) return true;
    writeFile(importNote(store.base()), textOf(plan.added)).requireSafe();
    return finishImport(store, progress);
}

bool finishImport(const Store& store, const Progress& progress) {
    const fs::path note = importNote(store.base());
    std::map<Day, Days> days;
    for (auto& [at, rows] : waitingDays(note)) days[at.day].emplace(at, rows);
    std::size_t done = 0;
    for (auto& [day, rows] : days) {
        if (!shouldContinue(progress, done++, days.size())) return false;
        addToDay(store, day, std::move(rows));
    }
    removeNote(store, note);
    return true;
}

fs::path importNote(const fs::path& part) { return part / ".importing"; }

void forgetImport(const Store& store, const Day& day) {
    const fs::path note = importNote(store.base());
    Days waiting = waitingDays(note);
    if (std::erase_if(waiting, [&](const auto& item) { return item.first.day == day; }) > 0)
        writeFile(note, textOf(waiting)).requireSafe();
}

}  // namespace tapcore

#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <vector>

#include "core/counting/day.h"
#include "core/files/file_problem.h"
#include "core/files/rows_read.h"
#include "core/files/store.h"
#include "core/foundation/progress.h"
#include "core/foundation/raw_values.h"

namespace tapcore {

// Taking rows of counts into this machine's own days. Each own day says in its Day table whose rows it took:
//
//     | import-9f86d081884c7d65 | Studio |
//
// The digest of those rows, and their machine ("-" for none). So the same rows are taken once, for as long as
// the day that holds them is there. All rows of an import are first written to the hidden note ".importing",
// and then added day by day: once the note is there, the import is finished by whoever writes next.

/// What becomes of a day of a machine whose rows are here with other counts already: from an earlier import,
/// or in the machine's own sub-folder.
enum class Differing { refused, skipped, added };
inline constexpr RawValues<Differing, 3> differingWords{{"refuse", "skip", "add"}};

/// What an import would do.
struct RowImport {
    std::map<MachineDay, DayFile> added;
    std::vector<MachineDay> known;      ///< they are here: imported before, or counted in this folder
    std::vector<MachineDay> differing;  ///< here with other counts, and left out
    FileProblems unread;                ///< files of these days that cannot be read, or added to

    /// Whether all of it is known to be right; else nothing may be added.
    bool isSound(Differing rule) const {
        return unread.empty() && (rule != Differing::refused || differing.empty());
    }
};

/// Compares rows with what the folder holds.
RowImport planned(const Store& store, const std::map<MachineDay, DayFile>& rows, Differing rule);

/// Adds the days of a plan to this machine's own files: all of them, or none when its note cannot be written.
/// One that fails later throws filesystem_error with the path; the rest is then added by `finishImport`, and
/// so it is when `progress` stops it, for which the result is false.
bool addRows(const Store& store, const RowImport& plan, const Progress& progress = {});

/// Adds what an interrupted import has not added yet; false when `progress` stops it. Throws
/// filesystem_error with the path.
bool finishImport(const Store& store, const Progress& progress = {});

/// The note of a part in which rows wait to be added.
std::filesystem::path importNote(const std::filesystem::path& part);

/// Takes a day out of the rows that wait to be added: what is cleared does not come back.
void forgetImport(const Store& store, const Day& day);

}  // namespace tapcore

#pragma once

#include <cstddef>
#include <vector>

#include "core/files/file_problem.h"
#include "core/files/kept_files.h"
#include "core/files/store.h"
#include "core/foundation/progress.h"

namespace tapcore {

/// What becomes of a day that was kept when other counts of it are here.
enum class DaysHere {
    left,   ///< the day here stays as it is
    added,  ///< what was kept is added to this machine's day, once
};

/// What came of it.
struct Restored {
    std::size_t placed = 0;       ///< files that were not here
    std::size_t added = 0;        ///< days added to those here
    std::size_t same = 0;         ///< files that are here already, or were restored before
    bool settingsDiffer = false;  ///< the folder has settings of its own, which stay
    bool mayAdd = false;          ///< days were left that `DaysHere::added` would add
    bool isWhole = true;          ///< false when it was interrupted; a repeat does the rest
};

/// Takes kept files into a data folder, which must pass `whyNotOfAFolder`. Nothing that is here is replaced
/// or removed. A day that is here with the same counts, in whichever format, is not taken again. A month is
/// taken when none of its days is here. A machine's files go to the folder with its mark, whatever its name.
///
/// It may be interrupted or killed at any point, and run again: ".restored" in a machine's folder notes each
/// day that was taken, so that none is taken twice, also when it was counted into since. Each file that is
/// left is named in `left`, with why. Throws filesystem_error when a folder cannot be listed or made, and as
/// soon as the disk is full or fails.
Restored restore(const std::vector<KeptFile>& files, const Store& store, DaysHere days,
                 const Progress& progress, FileProblems& left);

}  // namespace tapcore

#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "core/counting/day.h"
#include "core/files/file_problem.h"
#include "core/files/row_reader.h"
#include "core/files/store.h"

namespace tapcore {

/// The rows that are skipped when a file's text is read.
using SkippedRowsOf = std::function<std::vector<SkippedRow>(std::string_view text)>;

/// What in a data folder does not count, would surprise its owner, or is not as it should be: rows that are
/// skipped and why, files not named after a day, copies that sync tools left, a day in both formats,
/// rollups out of date, markers and settings that do not decode, two machines with one id, folders that
/// cannot be listed. By folder, then by file name; last, months of this machine's that are over and have no
/// rollup. Changes nothing.
///
/// `today` decides which days a rollup should hold. `practiceRows` tells the rows that a day of practice,
/// whose record is above this folder, skips.
FileProblems checkFolder(const Store& store, const Day& today, const SkippedRowsOf& practiceRows);

}  // namespace tapcore

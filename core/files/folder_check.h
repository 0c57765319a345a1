#pragma once

#include "core/counting/day.h"
#include "core/files/file_problem.h"
#include "core/files/store.h"

namespace tapcore {

/// What in a data folder does not count, would surprise its owner, or is not as it should be: rows that are
/// skipped and why, files whose names are no dates, copies that sync tools left, a day in both formats,
/// rollups out of date, markers and settings that do not decode, two machines with one id. By folder, then by
/// file name. Changes nothing.
///
/// `today` decides which days a rollup should hold. Rows of practice files are not looked at here.
FileProblems checkFolder(const Store& store, const Day& today);

}  // namespace tapcore

#pragma once

#include <filesystem>
#include <vector>

#include "core/files/file_problem.h"

namespace tapcore {

/// The regular files in a folder and the folders in it, by name; none for a folder that is missing. What is
/// not here yet, is a link, or cannot be listed is named in `missing`. What begins with "." is not taken: it
/// is of a write that goes on or was interrupted, or of another program.
std::vector<std::filesystem::path> filesBelow(const std::filesystem::path& folder, FileProblems& missing);

}  // namespace tapcore

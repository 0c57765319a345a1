#pragma once

#include <filesystem>
#include <vector>

#include "core/files/file_problem.h"

namespace tapcore {

/// Whether files are wanted whose names begin with ".".
enum class HiddenFiles { left, taken };

/// The regular files in a folder and the folders in it, by name; none for a folder that is missing. What is
/// not here yet, is a link, or cannot be listed is named in `missing`. What a writer has on its way is not a
/// file of it.
std::vector<std::filesystem::path> filesBelow(const std::filesystem::path& folder, HiddenFiles hidden,
                                              FileProblems& missing);

}  // namespace tapcore

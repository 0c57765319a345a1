#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "core/files/file_copies.h"
#include "core/files/store.h"

namespace tapcore {

/// Hands out the texts of a data file's copies that count, in order. A copy that cannot be read, and one that
/// is not UTF-8, is named in `problems` when given; of the latter the repaired text is handed out. Should
/// `visit` end the program, it says with which file.
void forEachText(const std::vector<FileCopy>& copies, FileProblems* problems,
                 const std::function<void(std::string_view text)>& visit);

/// Refuses copies whose content cannot all be taken over into the one that will replace them: throws
/// filesystem_error naming the first that cannot be read or is not UTF-8.
void requireWhole(const std::vector<FileCopy>& copies);

}  // namespace tapcore

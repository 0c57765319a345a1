#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "core/files/file_format.h"
#include "core/foundation/file_io.h"

namespace tapcore {

/// One of the copies that a data file may have beside each other: NAME.org, NAME.md, NAME.tsv.
struct FileCopy {
    std::filesystem::path path;
    FileRead file;
    /// Its content already stands in another copy, into which it was being merged when the program was
    /// interrupted.
    bool isSuperseded = false;
};

/// The copies of `name` that exist in a folder, in the format's reading order, unreadable ones included.
std::vector<FileCopy> readCopies(const std::filesystem::path& folder, std::string_view name,
                                 FileFormat format);

/// Writes `text`, which holds what `copies` held together, as the one copy of `name` in this format, and
/// removes those others. A crash at any moment leaves a folder that reads as before or as after: nothing is
/// lost or counted twice. `copies` are those that `readCopies` gave, all of them read. Throws
/// filesystem_error with the path.
void replaceCopies(const std::filesystem::path& folder, std::string_view name, FileFormat format,
                   std::string_view text, const std::vector<FileCopy>& copies);

}  // namespace tapcore

#pragma once

#include <filesystem>
#include <string_view>

namespace tapcore {

/// What a file of the data folder is for whoever takes it over from another one.
enum class FileKind {
    day,    ///< of counts or of practice: added to the one that is there
    month,  ///< made again from its days, so that the one that is there stays
    other,
};

/// Of a file directly in the folder of that name ("days"); of one in another folder, "".
FileKind fileKindOf(const std::filesystem::path& file, std::string_view folder);

/// Whether the days of a month's file are beside it: it is summed from them, and a copy of it from elsewhere
/// would seem to be that. Throws filesystem_error when that cannot be found out.
bool hasDaysOf(const std::filesystem::path& month);

}  // namespace tapcore

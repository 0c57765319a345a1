#pragma once

#include <filesystem>
#include <string_view>
#include <system_error>

namespace tapcore {

/// Why a file of the data folder is not touched, beyond what the file system says.
enum class FolderError {
    notUtf8 = 1,     ///< its text cannot be taken over whole
    notHereYet,      ///< iCloud Drive holds it and has not brought it here
    countsTooLarge,  ///< its counts cannot be added up
    notRows,         ///< it should hold rows of counts that wait, and holds something else
};

std::error_code make_error_code(FolderError error);

/// Throws a filesystem_error with this path and reason.
[[noreturn]] void refuse(const std::filesystem::path& path, std::error_code why);

}  // namespace tapcore

template <>
struct std::is_error_code_enum<tapcore::FolderError> : std::true_type {};

#pragma once

#include <filesystem>
#include <system_error>

namespace tapcore {

/// Whether anything has that name, be it a link that leads nowhere. For those who write or remove something
/// by the answer: throws filesystem_error with the path when it cannot be told, where `isThere` says no.
inline bool isTaken(const std::filesystem::path& path) {
    std::error_code error;
    const auto status = std::filesystem::symlink_status(path, error);
    const bool isMissing = status.type() == std::filesystem::file_type::not_found;
    if (error && !isMissing)
        throw std::filesystem::filesystem_error("cannot tell whether it is there", path, error);
    return !isMissing;
}

}  // namespace tapcore

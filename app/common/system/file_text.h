#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "core/foundation/file_io.h"

namespace tappora {

/// The text of a file that was read. Failure, naming it, when there is no such file or it cannot be read.
std::string requiredText(const std::filesystem::path& path, tapcore::FileRead file);

/// The text of a file that was read; nothing when there is no such file. Failure when it cannot be read.
std::optional<std::string> optionalText(const std::filesystem::path& path, tapcore::FileRead file);

}  // namespace tappora

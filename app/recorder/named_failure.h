#pragma once

#include <filesystem>

#include "app/common/program.h"

namespace tappora {

/// Runs what throws filesystem_error, and throws a Failure instead: "PATH: WHY".
void namingFailure(auto work) try { work(); } catch (const std::filesystem::filesystem_error& error) {
    throw Failure(error.path1().string(), error.code().message());
}

}  // namespace tappora

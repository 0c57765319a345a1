#pragma once

#include <filesystem>

#include "app/common/system/environment.h"

namespace tappora {

/// The folder of what comes with the program: boards, layouts, texts. It is the one that TAPPORA_RESOURCES
/// names, or the one of the installation that the program belongs to (share/tappora beside bin and libexec).
/// Throws Failure when it is not found.
std::filesystem::path resourceFolder(const Environment& environment);

}  // namespace tappora

#pragma once

#include <filesystem>

#include "app/common/program.h"

namespace tappora {

/// The folder of what comes with the program: boards, layouts, texts. It is the one that TAPPORA_RESOURCES
/// names; else
/// ../share/tappora beside the program; else the source tree that the program was built in. Throws Failure
/// when there is none.
std::filesystem::path resourceFolder(const Environment& environment);

}  // namespace tappora

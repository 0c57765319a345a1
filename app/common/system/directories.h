#pragma once

#include <filesystem>

#include "app/common/system/environment.h"

namespace tappora {

/// Where programs of one user meet while they run: $XDG_RUNTIME_DIR/tappora, else /run/user/UID/tappora, else
/// /tmp/tappora-UID, so that a process started outside the user's session meets those inside. It need not
/// exist.
std::filesystem::path runtimeDirectory(const Environment& environment);

/// The same, made. Failure when it is not the user's own.
std::filesystem::path madeRuntimeDirectory(const Environment& environment);

/// Whether a directory is there and belongs to this user. One that another user made first could take our
/// locks, or lead them elsewhere.
bool isOwnDirectory(const std::filesystem::path& directory);

}  // namespace tappora

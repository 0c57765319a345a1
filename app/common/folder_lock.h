#pragma once

#include <filesystem>

#include "app/common/program.h"
#include "core/foundation/file_lock.h"

namespace tappora {

/// What a lock of a data folder is for.
enum class FolderLock {
    recording,  ///< held by the one live recorder of the folder, for its life
    writing,    ///< held by any process around each time it reads, changes and writes something in the folder
};

/// The file of a data folder's lock: in the user's runtime directory, never in the folder itself. All names
/// of one folder (relative, through links) give the same file; the folder need not exist yet. The directory
/// is made; Failure when it is not the user's own.
std::filesystem::path lockFile(const Environment& environment, const std::filesystem::path& folder,
                               FolderLock lock);

/// Waits for the folder's writing lock.
[[nodiscard]] tapcore::FileLock lockForWriting(const Environment& environment,
                                               const std::filesystem::path& folder);

}  // namespace tappora

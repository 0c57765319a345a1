#pragma once

#include <filesystem>
#include <functional>
#include <optional>

#include "app/common/folder/tell.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "core/foundation/file_lock.h"

namespace tappora {

/// A lock of a folder, held for as long as this lives.
struct FolderLock {
    /// Who sees it.
    enum class Reach {
        machine,  ///< everybody: it is on the folder itself
        session,  ///< programs with the same runtime directory alone: the folder's file system has no locks
    };

    tapcore::FileLock lock;
    Reach reach = Reach::machine;
};

/// Waits for the lock of a folder, which must be there: of a data folder, the lock that any process holds
/// around each time it reads, changes and writes something in it; of the settings' folder, the same. Throws
/// filesystem_error with the folder.
[[nodiscard]] FolderLock lockForWriting(const Environment& environment, const std::filesystem::path& folder);

/// How that lock is taken, by one who waits for it in a way of its own.
using LockForWriting =
    std::function<FolderLock(const Environment& environment, const std::filesystem::path& folder)>;

/// Takes that lock without waiting; nothing when another holds it.
[[nodiscard]] std::optional<FolderLock> tryLockForWriting(const Environment& environment,
                                                          const std::filesystem::path& folder);

/// The lock that the one live recorder into a folder of days holds for its life; nothing when another holds
/// it. It is a lock of `days` itself, which no writer locks.
[[nodiscard]] std::optional<FolderLock> tryLockForRecording(const Environment& environment,
                                                            const std::filesystem::path& days);

/// Warns of a lock that not everybody sees.
void complainOfReach(const FolderLock& lock, const std::filesystem::path& folder,
                     const Tell& tell = complain);

}  // namespace tappora

#include "app/common/folder/folder_lock.h"

#include <fmt/format.h>

#include <system_error>
#include <utility>

#include "app/common/system/directories.h"
#include "core/foundation/digest.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;
using tapcore::FileLock;
using Reach = FolderLock::Reach;

/// The file that is locked in place of a folder whose file system has no locks.
fs::path lockFile(const Environment& environment, const fs::path& folder) {
    return madeRuntimeDirectory(environment) /
           fmt::format("{:016x}.lock", tapcore::fnv1a(fs::canonical(folder).native()));
}

/// The lock that `onFolder` gives, or `onFile` where the folder's file system has none.
template <class Lock>
std::pair<Lock, Reach> either(const Environment& environment, const fs::path& folder,
                              Lock (*onFolder)(const fs::path&), Lock (*onFile)(const fs::path&)) {
    try {
        return {onFolder(folder), Reach::machine};
    } catch (const fs::filesystem_error& error) {
        if (error.code() != std::errc::not_supported) throw;
    }
    return {onFile(lockFile(environment, folder)), Reach::session};
}

}  // namespace

FolderLock lockForWriting(const Environment& environment, const fs::path& folder) {
    auto [lock, reach] = either(environment, folder, FileLock::acquireFolder, FileLock::acquire);
    return {std::move(lock), reach};
}

std::optional<FolderLock> tryLockForWriting(const Environment& environment, const fs::path& folder) {
    auto [lock, reach] = either(environment, folder, FileLock::tryAcquireFolder, FileLock::tryAcquire);
    if (!lock) return std::nullopt;
    return FolderLock{std::move(*lock), reach};
}

std::optional<FolderLock> tryLockForRecording(const Environment& environment, const fs::path& days) {
    return tryLockForWriting(environment, days);
}

void complainOfReach(const FolderLock& lock, const fs::path& folder, const Tell& tell) {
    if (lock.reach == Reach::session)
        tell(folder.string() +
             ": its file system has no locks; see that no service, no other user and no sandbox writes in it "
             "at the same time");
}

}  // namespace tappora

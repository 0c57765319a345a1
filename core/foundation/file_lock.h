#pragma once

#include <filesystem>
#include <optional>

#include "core/foundation/descriptor.h"

namespace tapcore {

/// An advisory lock between processes, held for as long as this lives; a process that ends, however it does,
/// gives its locks back.
///
/// One holder at a time, also within one process: a second lock of the same file or folder waits, or fails,
/// as from outside.
class FileLock {
  public:
    /// A lock of a file of no content, made when missing (mode 0600) and never removed: a lock file that came
    /// and went could be held twice. Waits until the lock is free. Throws filesystem_error with the path when
    /// the file cannot be made or opened.
    [[nodiscard]] static FileLock acquire(const std::filesystem::path& path);
    /// A lock of a file as `acquire` takes it, without waiting; nothing when another holds the lock.
    [[nodiscard]] static std::optional<FileLock> tryAcquire(const std::filesystem::path& path);

    /// A lock of a folder that is there, by whatever name: nothing is made in it, and everybody on the
    /// machine takes the same. Waits until it is free. Throws filesystem_error with the path: with
    /// std::errc::not_supported where the file system has no locks.
    [[nodiscard]] static FileLock acquireFolder(const std::filesystem::path& folder);
    /// A lock of a folder as `acquireFolder` takes it, without waiting; nothing when another holds the lock.
    [[nodiscard]] static std::optional<FileLock> tryAcquireFolder(const std::filesystem::path& folder);

  private:
    explicit FileLock(Descriptor file) : file_(std::move(file)) {}

    Descriptor file_;
};

}  // namespace tapcore

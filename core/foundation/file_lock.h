#pragma once

#include <filesystem>
#include <optional>

#include "core/foundation/descriptor.h"

namespace tapcore {

/// An advisory lock between processes, held for as long as this lives; a process that ends, however it does,
/// gives its locks back. It is a lock on a file of no content, made when missing (mode 0600) and never
/// removed: a lock file that came and went could be held twice.
///
/// One holder at a time, also within one process: a second lock of the same file waits, or fails, as from
/// outside.
class FileLock {
  public:
    /// Waits until the lock is free. Throws filesystem_error with the path when the file cannot be made or
    /// opened.
    [[nodiscard]] static FileLock acquire(const std::filesystem::path& path);

    /// The same without waiting; nothing when another holds the lock.
    [[nodiscard]] static std::optional<FileLock> tryAcquire(const std::filesystem::path& path);

  private:
    explicit FileLock(Descriptor file) : file_(std::move(file)) {}

    Descriptor file_;
};

}  // namespace tapcore

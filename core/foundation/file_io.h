#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "core/foundation/descriptor.h"
#include "core/foundation/written.h"

namespace tapcore {

/// The outcome of reading a file.
struct FileRead {
    enum class Status {
        missing,     ///< nothing has that name
        unreadable,  ///< something has, and `error` says why it could not be read; a directory is one
        read,        ///< `text` is all of it
    };

    Status status = Status::missing;
    std::string text;
    std::error_code error;

    /// Why there is no text, for whoever needs the file: of a missing one that there is no such file. Empty
    /// when it was read.
    std::error_code failure() const;
};

inline constexpr std::size_t anySize = std::numeric_limits<std::size_t>::max();

/// A text file, without a byte-order mark at its start; unreadable when it is larger than `most` bytes. Never
/// throws.
FileRead readFile(const std::filesystem::path& path, std::size_t most = anySize);

/// A text file as `readFile` reads it, of what must be a regular file: a pipe, whose end would be waited for,
/// is unreadable. Never throws.
FileRead readStoredFile(const std::filesystem::path& path);

/// The text of an open file, which must be a regular one, as `readFile` gives it. Of one that could not be
/// opened, `errno` must still say why: it is missing or unreadable accordingly. Never throws.
FileRead readStoredFile(const Descriptor& file);

/// All bytes of a file, a byte-order mark included; unreadable when it is larger than `most` bytes. Never
/// throws.
FileRead readBytes(const std::filesystem::path& path, std::size_t most = anySize);

/// Whether anything has that name, even a link that leads nowhere. False also when that cannot be found out.
bool isThere(const std::filesystem::path& path);

/// Whether anything has that name, even a link that leads nowhere. For those who write or remove something by
/// the answer: throws filesystem_error with the path when it cannot be found out.
bool existsOrThrow(const std::filesystem::path& path);

/// Replaces a file whole, or makes it, so that a reader sees the old text or the new one, also after a crash
/// or a power cut: the text goes to a hidden file beside it, is flushed to disk and moved into place. The
/// file is the user's own to read (mode 0600). Missing folders are made. What an interrupted writer left in
/// that folder is removed. Throws std::filesystem::filesystem_error with the path when it is not done; the
/// old file is then as it was, and no other file is left behind.
///
/// With `lastWritten`, since 1970, the file says from the first moment that it was written then.
Written writeFile(const std::filesystem::path& path, std::string_view text,
                  std::optional<std::chrono::nanoseconds> lastWritten = std::nullopt);

/// Whether a file is one that `writeFile` writes on its way: of no meaning to anybody else.
bool isTemporary(const std::filesystem::path& path);

/// Makes a folder and those above it, for the user alone (mode 0700). Throws filesystem_error with the path.
Written makeFolders(const std::filesystem::path& folder);

/// Sees that what was made, renamed or removed in a folder is so on disk.
Written flushFolder(const std::filesystem::path& folder);

/// Gives a file another name, in one step, flushed to disk; the new name's folder is made when missing.
/// Throws filesystem_error with the path when it is not done.
Written renameFile(const std::filesystem::path& from, const std::filesystem::path& to);

/// Removes a file; true when it was there. Throws filesystem_error with the path.
bool removeFile(const std::filesystem::path& path);

/// When the files of one folder were written: for asking about many of them.
class FolderTimes {
  public:
    explicit FolderTimes(const std::filesystem::path& folder);

    /// Since 1970; nothing when the file is not there, or its time cannot be read.
    std::optional<std::chrono::nanoseconds> lastWritten(const std::string& name) const;

  private:
    Descriptor folder_;
};

}  // namespace tapcore

#pragma once

#include <filesystem>
#include <string>

#include "core/foundation/descriptor.h"
#include "core/foundation/file_io.h"
#include "core/foundation/folder_listing.h"

namespace tapcore {

/// A folder held open. What is read below it is below it, whatever is renamed or linked meanwhile: each step
/// of a path is opened in the folder that the step before it gave, and none of them may be a link.
class HeldFolder {
  public:
    /// Opens a folder by a name that may lead through links. Below one that is missing, all is missing; below
    /// one that cannot be opened, all is unreadable.
    explicit HeldFolder(const std::filesystem::path& folder);

    /// A folder below this one; `path` has plain names alone.
    HeldFolder folder(const std::filesystem::path& path) const;

    /// The names in this folder. Never throws.
    FolderListing list() const;

    enum class Kind { none, file, link };
    /// What an entry is: a regular file, a link, or neither, as what is not there.
    Kind kindOf(const std::string& name) const;

    /// The text of a file below this one, as `readStoredFile` reads it. Never throws.
    FileRead read(const std::filesystem::path& path) const;

  private:
    explicit HeldFolder(Descriptor opened);
    Descriptor open(const std::filesystem::path& path, int flags) const;

    Descriptor opened_;
    int error_ = 0;  ///< why it could not be opened, as errno says
};

}  // namespace tapcore

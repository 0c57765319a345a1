#pragma once

#include <filesystem>
#include <vector>

#include "core/foundation/descriptor.h"

namespace tappora {

/// Says when files in some folders change. Hidden files do not count: a file that is replaced whole is hidden
/// until it is done.
class FolderWatch {
  public:
    /// Throws std::system_error when the system has no more of them.
    FolderWatch();

    /// Watches a folder too, but not those in it; while it is missing, the next one above it that is there.
    void add(const std::filesystem::path& folder) const;

    /// Readable when something happened.
    int descriptor() const { return file_.get(); }
    /// Takes note of all that happened; true when something of it counts.
    bool takeNote() const;

  private:
    tapcore::Descriptor file_;
};

}  // namespace tappora

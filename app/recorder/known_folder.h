#pragma once

#include <filesystem>

#include "core/foundation/descriptor.h"

namespace tappora {

/// A folder that was opened, and is known again whatever becomes of its name.
class KnownFolder {
  public:
    /// Holds no folder.
    KnownFolder() = default;
    /// Throws filesystem_error with the path when it cannot be opened.
    explicit KnownFolder(const std::filesystem::path& folder);

    bool isOpen() const { return folder_.isOpen(); }
    /// Whether a path leads to this folder.
    bool isAt(const std::filesystem::path& path) const;

  private:
    tapcore::Descriptor folder_;
};

}  // namespace tappora

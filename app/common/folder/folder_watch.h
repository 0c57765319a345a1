#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string>

#include "core/foundation/descriptor.h"

namespace tappora {

/// Says when files in some folders change. Hidden files do not count: a file that is replaced whole is hidden
/// until it is done.
class FolderWatch {
  public:
    /// Throws std::system_error when the system has no more of them.
    FolderWatch();

    /// Watches a folder too, but not those in it. While it is missing, its coming is watched for in the next
    /// one above it that is there: after each change that counts, add it again.
    void add(const std::filesystem::path& folder);

    /// Readable when something happened.
    int descriptor() const { return file_.get(); }
    /// Takes note of everything that happened; true when something of it counts.
    bool takeNote();

  private:
    /// A missing folder is waited for as a name in another folder.
    struct Awaited {
        int above = -1;  ///< the watch on that folder
        std::string name;
    };

    bool watchFolder(const std::filesystem::path& folder);
    bool waitFor(const std::filesystem::path& folder);
    void wait(const std::filesystem::path& folder, std::optional<Awaited> next);
    bool isOfUse(int watch) const;
    bool countsAsChange(int watch, std::uint32_t what, const std::string& name) const;
    void forget(int watch);

    tapcore::Descriptor file_;
    std::set<int> folders_;                           ///< the watches on folders that are there
    std::map<std::filesystem::path, Awaited> waits_;  ///< by the folder that is missing
};

}  // namespace tappora

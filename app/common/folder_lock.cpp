#include "app/common/folder_lock.h"

#include <fmt/format.h>

#include <string_view>

#include "app/common/runtime_directory.h"
#include "core/foundation/digest.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;

/// The one of a folder's names that they all lead to; the same before the folder exists as after.
fs::path oneName(const fs::path& folder) {
    fs::path name = fs::weakly_canonical(fs::absolute(folder));
    return name.has_filename() ? name : name.parent_path();
}

}  // namespace

fs::path lockFile(const Environment& environment, const fs::path& folder, FolderLock lock) {
    const std::string_view purpose = lock == FolderLock::recording ? "recording" : "writing";
    return madeRuntimeDirectory(environment) /
           fmt::format("{:016x}.{}", tapcore::fnv1a(oneName(folder).native()), purpose);
}

tapcore::FileLock lockForWriting(const Environment& environment, const fs::path& folder) {
    return tapcore::FileLock::acquire(lockFile(environment, folder, FolderLock::writing));
}

}  // namespace tappora

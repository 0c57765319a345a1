#include "app/common/folder_lock.h"

#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string_view>

#include "core/foundation/digest.h"
#include "core/foundation/file_io.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;

/// Another user who made the directory first could take our locks, or lead them elsewhere.
bool isOwn(const fs::path& directory) {
    struct stat status {};
    return ::lstat(directory.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == ::getuid();
}

fs::path runtimeDirectory(const Environment& environment) {
    const auto named = environment.variable("XDG_RUNTIME_DIR");
    if (named && fs::path(*named).is_absolute()) return fs::path(*named) / "tappora";
    const fs::path usual = fmt::format("/run/user/{}", ::getuid());
    if (isOwn(usual)) return usual / "tappora";
    return fmt::format("/tmp/tappora-{}", ::getuid());
}

/// The one of a folder's names that they all lead to; the same before the folder exists as after.
fs::path oneName(const fs::path& folder) {
    fs::path name = fs::weakly_canonical(fs::absolute(folder));
    return name.has_filename() ? name : name.parent_path();
}

}  // namespace

fs::path lockFile(const Environment& environment, const fs::path& folder, FolderLock lock) {
    const fs::path directory = runtimeDirectory(environment);
    tapcore::makeFolders(directory);
    if (!isOwn(directory))
        throw Failure(directory.string(), "not a directory of this user; the folder's locks would lie in it");
    const std::string_view purpose = lock == FolderLock::recording ? "recording" : "writing";
    return directory / fmt::format("{:016x}.{}", tapcore::fnv1a(oneName(folder).native()), purpose);
}

tapcore::FileLock lockForWriting(const Environment& environment, const fs::path& folder) {
    return tapcore::FileLock::acquire(lockFile(environment, folder, FolderLock::writing));
}

}  // namespace tappora

#include "app/common/system/directories.h"

#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "core/foundation/file_io.h"

namespace tappora {

namespace fs = std::filesystem;

bool isOwnDirectory(const fs::path& directory) {
    struct stat status {};
    return ::lstat(directory.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == ::getuid();
}

fs::path runtimeDirectory(const Environment& environment) {
    const auto named = environment.variable("XDG_RUNTIME_DIR");
    if (named && fs::path(*named).is_absolute()) return fs::path(*named) / "tappora";
    const fs::path usual = fmt::format("/run/user/{}", ::getuid());
    if (isOwnDirectory(usual)) return usual / "tappora";
    return fmt::format("/tmp/tappora-{}", ::getuid());
}

fs::path madeRuntimeDirectory(const Environment& environment) {
    fs::path directory = runtimeDirectory(environment);
    (void)tapcore::makeFolders(directory);  // it need not outlive the session
    if (!isOwnDirectory(directory))
        throw Failure(directory.string(), "not a directory of this user; locks would lie in it");
    return directory;
}

}  // namespace tappora

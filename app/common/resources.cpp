#include "app/common/resources.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;

bool isFolder(const fs::path& path) {
    std::error_code error;
    return fs::is_directory(path, error);
}

}  // namespace

fs::path resourceFolder(const Environment& environment) {
    const auto named = environment.variable("TAPPORA_RESOURCES");
    if (named && !named->empty()) {
        if (!isFolder(*named)) throw Failure("TAPPORA_RESOURCES", *named + ": no such folder");
        return *named;
    }
    const fs::path installed = environment.program.parent_path().parent_path() / "share" / "tappora";
    if (isFolder(installed)) return installed;
    const fs::path source = TAPPORA_SOURCE_RESOURCES;
    if (isFolder(source)) return source;
    throw Failure(installed.string(), "no such folder; reinstall, or name it with TAPPORA_RESOURCES");
}

}  // namespace tappora

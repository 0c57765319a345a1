#include "app/common/system/resources.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"

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
    const fs::path folder = environment.program.parent_path();
    const fs::path besidePrograms = (folder / DATA_FROM_PROGRAMS).lexically_normal();
    for (const fs::path& place : {besidePrograms, (folder / DATA_FROM_COMPANIONS).lexically_normal()})
        if (isFolder(place)) return place;
    throw Failure(besidePrograms.string(), "no such folder; reinstall, or name it with TAPPORA_RESOURCES");
}

}  // namespace tappora

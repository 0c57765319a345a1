#include "app/recorder/known_folder.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <system_error>

namespace tappora {

namespace fs = std::filesystem;

KnownFolder::KnownFolder(const fs::path& folder)
    : folder_(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    if (!isOpen()) throw fs::filesystem_error("cannot open", folder, {errno, std::generic_category()});
}

bool KnownFolder::isAt(const fs::path& path) const {
    struct stat held {};
    struct stat named {};
    return ::fstat(folder_.get(), &held) == 0 && ::stat(path.c_str(), &named) == 0 &&
           held.st_dev == named.st_dev && held.st_ino == named.st_ino;
}

}  // namespace tappora

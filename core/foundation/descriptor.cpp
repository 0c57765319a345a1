#include "core/foundation/descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace tapcore {

bool writeAll(const Descriptor& file, std::string_view text) {
    while (!text.empty()) {
        const auto written = ::write(file.get(), text.data(), text.size());
        if (written < 0 && errno != EINTR) return false;
        if (written > 0) text.remove_prefix(static_cast<std::size_t>(written));
    }
    return retrying([&] { return ::fsync(file.get()); }) == 0;
}

bool isNamed(const Descriptor& opened, const std::filesystem::path& path, LastLink link) {
    struct stat open {};
    struct stat named {};
    const int flags = link == LastLink::followed ? 0 : AT_SYMLINK_NOFOLLOW;
    return ::fstat(opened.get(), &open) == 0 && ::fstatat(AT_FDCWD, path.c_str(), &named, flags) == 0 &&
           open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

}  // namespace tapcore

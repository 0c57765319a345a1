#include "app/common/folder_watch.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <system_error>

namespace tappora {
namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t changes = IN_CLOSE_WRITE | IN_MOVED_FROM | IN_MOVED_TO | IN_CREATE | IN_DELETE |
                                  IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;

[[noreturn]] void fail() { throw std::system_error(errno, std::generic_category(), "watching folders"); }

/// Of a file in the folder only what is done counts. Events without a name are about the folder itself, or
/// say that others were lost.
bool countsAsChange(const inotify_event& event) {
    if ((event.mask & IN_ISDIR) != 0 || event.len == 0) return (event.mask & IN_IGNORED) == 0;
    return event.name[0] != '.' && (event.mask & IN_CREATE) == 0;
}

}  // namespace

FolderWatch::FolderWatch() : file_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    if (!file_.isOpen()) fail();
}

void FolderWatch::add(const fs::path& folder) const {
    for (fs::path at = fs::absolute(folder).lexically_normal();; at = at.parent_path()) {
        if (::inotify_add_watch(file_.get(), at.c_str(), changes) >= 0) return;
        if (errno != ENOENT && errno != ENOTDIR && errno != EACCES) fail();
        if (at == at.parent_path()) return;
    }
}

bool FolderWatch::takeNote() const {
    alignas(inotify_event) char buffer[4096];
    bool isChanged = false;
    for (ssize_t size = 0; (size = ::read(file_.get(), buffer, sizeof buffer)) > 0;)
        for (ssize_t at = 0; at < size;) {
            const auto& event = *reinterpret_cast<const inotify_event*>(buffer + at);
            isChanged = isChanged || countsAsChange(event);
            at += static_cast<ssize_t>(sizeof event + event.len);
        }
    return isChanged;
}

}  // namespace tappora

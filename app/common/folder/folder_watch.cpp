#include "app/common/folder/folder_watch.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace tappora {
namespace {

namespace fs = std::filesystem;

/// That a folder comes, or that the one which it was to come in goes.
constexpr std::uint32_t comings =
    IN_CREATE | IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR | IN_MASK_ADD;
constexpr std::uint32_t changes = comings | IN_CLOSE_WRITE | IN_MOVED_FROM | IN_DELETE;

[[noreturn]] void fail() { throw std::system_error(errno, std::generic_category(), "watching folders"); }

/// The watch on a folder, or -1 when the folder is missing or cannot be read.
int watchOn(int file, const fs::path& folder, std::uint32_t events) {
    const int watch = ::inotify_add_watch(file, folder.c_str(), events);
    if (watch < 0 && errno != ENOENT && errno != ENOTDIR && errno != EACCES) fail();
    return watch;
}

}  // namespace

FolderWatch::FolderWatch() : file_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    if (!file_.isOpen()) fail();
}

void FolderWatch::add(const fs::path& folder) {
    fs::path whole = fs::absolute(folder).lexically_normal();
    if (!whole.has_filename()) whole = whole.parent_path();  // "folder/"
    // What is made before its coming is watched for raises no event, so that one looks again; but not for
    // ever at one that may not be watched.
    constexpr int rounds = 100;
    for (int round = 0; round < rounds && !watchFolder(whole) && waitFor(whole); ++round) {
    }
}

bool FolderWatch::watchFolder(const fs::path& folder) {
    const int watch = watchOn(file_.get(), folder, changes);
    if (watch < 0) return false;
    folders_.insert(watch);
    wait(folder, std::nullopt);
    return true;
}

/// Watches for a missing folder, or the first that is missing above it. True when that is there by now.
bool FolderWatch::waitFor(const fs::path& folder) {
    for (fs::path child = folder; child.has_relative_path(); child = child.parent_path()) {
        const int above = watchOn(file_.get(), child.parent_path(), comings);
        if (above < 0) continue;
        wait(folder, Awaited{above, child.filename().string()});
        std::error_code none;
        return fs::is_directory(child, none) && ::access(child.c_str(), R_OK) == 0;
    }
    return false;
}

/// Waits for a folder in another way than before, or no more.
void FolderWatch::wait(const fs::path& folder, std::optional<Awaited> next) {
    const auto found = waits_.find(folder);
    const int before = found == waits_.end() ? -1 : found->second.above;
    if (next) waits_[folder] = *std::move(next);
    else waits_.erase(folder);
    if (before >= 0 && !isOfUse(before)) ::inotify_rm_watch(file_.get(), before);
}

bool FolderWatch::isOfUse(int watch) const {
    return folders_.contains(watch) || std::any_of(waits_.begin(), waits_.end(), [&](const auto& wait) {
               return wait.second.above == watch;
           });
}

/// Of a file in a folder only what is done counts. Events without a name are about the folder itself, or say
/// that others were lost.
bool FolderWatch::countsAsChange(int watch, std::uint32_t what, const std::string& name) const {
    if (name.empty()) return (what & IN_IGNORED) == 0;
    const bool isAwaited = std::any_of(waits_.begin(), waits_.end(), [&](const auto& wait) {
        return wait.second.above == watch && wait.second.name == name;
    });
    if (isAwaited || !folders_.contains(watch)) return isAwaited;
    if ((what & IN_ISDIR) != 0) return true;
    return !name.starts_with('.') && (what & IN_CREATE) == 0;
}

/// The folder of a watch is gone, and the watch with it.
void FolderWatch::forget(int watch) {
    folders_.erase(watch);
    std::erase_if(waits_, [&](const auto& wait) { return wait.second.above == watch; });
}

bool FolderWatch::takeNote() {
    alignas(inotify_event) char buffer[4096];
    bool isChanged = false;
    for (ssize_t size = 0; (size = ::read(file_.get(), buffer, sizeof buffer)) > 0;)
        for (ssize_t at = 0; at < size;) {
            const auto& event = *reinterpret_cast<const inotify_event*>(buffer + at);
            // Names are filled up with zeros.
            const std::string name(event.len > 0 ? event.name : "");
            isChanged = isChanged || countsAsChange(event.wd, event.mask, name);
            if ((event.mask & IN_MOVE_SELF) != 0) ::inotify_rm_watch(file_.get(), event.wd);
            if ((event.mask & IN_IGNORED) != 0) forget(event.wd);
            at += static_cast<ssize_t>(sizeof event + event.len);
        }
    return isChanged;
}

}  // namespace tappora

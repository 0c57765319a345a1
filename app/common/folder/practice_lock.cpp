#include "app/common/folder/practice_lock.h"

#include <fcntl.h>

#include <algorithm>
#include <utility>

#include "app/common/folder/settings.h"
#include "app/common/program.h"
#include "core/foundation/file_io.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;

/// A lock of a whole file or folder that belongs to what was opened, not to the process (fcntl(2), "Open file
/// description locks"): unlike flock's it can be asked for without being taken.
struct flock wholeFile(short type) {
    struct flock lock {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    return lock;
}

/// Opened each time: at first a folder may not be there yet, and later another one may have its name.
tapcore::Descriptor opened(const fs::path& folder) {
    return tapcore::Descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
}

bool isLocked(const tapcore::Descriptor& folder) {
    struct flock lock = wholeFile(F_WRLCK);
    return folder.isOpen() && ::fcntl(folder.get(), F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

}  // namespace

std::vector<fs::path> practiceFolders(const Environment& environment, const fs::path& dataFolder) {
    std::vector<fs::path> folders = {fs::absolute(dataFolder)};
    try {
        folders.push_back(Settings::url(environment).parent_path());
    } catch (const Failure&) {  // a service without a home
    }
    return folders;
}

PracticeLock::PracticeLock(const Environment& environment, const fs::path& dataFolder)
    : paths_(practiceFolders(environment, dataFolder)) {
    try {
        if (paths_.size() > 1) (void)tapcore::makeFolders(paths_.back());
    } catch (const fs::filesystem_error&) {  // then recorders into other folders are not told
    }
}

void PracticeLock::hold() {
    if (held_.size() == paths_.size()) return;
    std::vector<tapcore::Descriptor> held;
    for (const fs::path& folder : paths_) {
        tapcore::Descriptor open = opened(folder);
        struct flock lock = wholeFile(F_RDLCK);  // shared, it is never waited for
        if (open.isOpen() && ::fcntl(open.get(), F_OFD_SETLK, &lock) == 0) held.push_back(std::move(open));
    }
    held_ = std::move(held);
}

void PracticeLock::release() { held_.clear(); }

bool isPractising(const std::vector<fs::path>& folders) {
    return std::any_of(folders.begin(), folders.end(),
                       [](const fs::path& folder) { return isLocked(opened(folder)); });
}

PracticeWatch::PracticeWatch(std::vector<fs::path> folders) : paths_(std::move(folders)) { lookAgain(); }

void PracticeWatch::lookAgain() {
    auto folders = std::make_shared<Folders>();
    for (const fs::path& folder : paths_) folders->push_back(opened(folder));
    const std::lock_guard lock(mutex_);
    folders_ = std::move(folders);
}

bool PracticeWatch::isPractising() const {
    const auto folders = [&] {
        const std::lock_guard lock(mutex_);
        return folders_;
    }();
    return std::any_of(folders->begin(), folders->end(), isLocked);
}

}  // namespace tappora

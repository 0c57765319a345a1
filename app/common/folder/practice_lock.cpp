#include "app/common/folder/practice_lock.h"

#include <fcntl.h>
#include <unistd.h>

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

bool isLocked(const tapcore::Descriptor& place) {
    struct flock lock = wholeFile(F_WRLCK);
    return place.isOpen() && ::fcntl(place.get(), F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

}  // namespace

std::vector<fs::path> practicePlaces(const Environment& environment, const fs::path& dataFolder) {
    std::vector<fs::path> places = {fs::absolute(dataFolder)};
    try {
        places.push_back(Settings::url(environment).parent_path());
    } catch (const Failure&) {  // a service without a home
    }
    return places;
}

PracticeLock::PracticeLock(const Environment& environment, const fs::path& dataFolder)
    : places_(practicePlaces(environment, dataFolder)) {
    try {
        if (places_.size() > 1) (void)tapcore::makeFolders(places_.back());
    } catch (const fs::filesystem_error&) {  // then recorders into other folders are not told
    }
}

void PracticeLock::hold() {
    if (held_.size() == places_.size()) return;
    std::vector<tapcore::Descriptor> held;
    for (const fs::path& folder : places_) {
        tapcore::Descriptor place = opened(folder);
        struct flock lock = wholeFile(F_RDLCK);  // shared, it is never waited for
        if (place.isOpen() && ::fcntl(place.get(), F_OFD_SETLK, &lock) == 0) held.push_back(std::move(place));
    }
    held_ = std::move(held);
}

void PracticeLock::release() { held_.clear(); }

bool isPractising(const std::vector<fs::path>& places) {
    return std::any_of(places.begin(), places.end(),
                       [](const fs::path& folder) { return isLocked(opened(folder)); });
}

PracticeWatch::PracticeWatch(std::vector<fs::path> places) : places_(std::move(places)) { lookAgain(); }

void PracticeWatch::lookAgain() {
    auto folders = std::make_shared<Folders>();
    for (const fs::path& place : places_) folders->push_back(opened(place));
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

#pragma once

#include <filesystem>
#include <memory>
#include <mutex>
#include <vector>

#include "app/common/system/environment.h"
#include "core/foundation/descriptor.h"

namespace tappora {

/// The folders by which a trainer and a recorder find each other. One is the data folder: they share it, no
/// matter how and by whom they were started. The other is the folder of the user's settings, where there is a
/// home: it is for a trainer and a recorder of one user with different data folders.
std::vector<std::filesystem::path> practiceFolders(const Environment& environment,
                                                   const std::filesystem::path& dataFolder);

/// How a trainer tells recorders that the keys pressed now are practice: it holds a shared lock on those
/// folders. No file is made. Several trainers may hold the lock at once. When a process ends, for whatever
/// reason, the system releases its lock. Writers use locks of another kind: neither waits for the other.
class PracticeLock {
  public:
    /// Not held yet. Makes the settings' folder, if it can.
    PracticeLock(const Environment& environment, const std::filesystem::path& dataFolder);

    /// Holds it on those folders that are there.
    void hold();
    void release();

  private:
    std::vector<std::filesystem::path> paths_;
    std::vector<tapcore::Descriptor> held_;
};

/// Whether a trainer holds the lock on one of the folders. Asking takes no lock, so two programs that ask do
/// not take each other for trainers.
bool isPractising(const std::vector<std::filesystem::path>& folders);

/// Whether a trainer holds the lock, for a thread that may not wait for a disk: asking opens nothing.
class PracticeWatch {
  public:
    explicit PracticeWatch(std::vector<std::filesystem::path> folders);

    /// Opens the folders again. Another thread should do this now and then: a folder may be made later, or be
    /// replaced by another one of its name.
    void lookAgain();
    bool isPractising() const;

  private:
    using Folders = std::vector<tapcore::Descriptor>;

    std::vector<std::filesystem::path> paths_;
    mutable std::mutex mutex_;
    std::shared_ptr<const Folders> folders_;
};

}  // namespace tappora

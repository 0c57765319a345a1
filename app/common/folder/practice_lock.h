#pragma once

#include <filesystem>
#include <memory>
#include <mutex>
#include <vector>

#include "app/common/system/environment.h"
#include "core/foundation/descriptor.h"

namespace tappora {

/// The folders by which a trainer and a recorder find each other: the data folder, which they share however
/// and by whom they were started; and the folder of the user's settings, where there is a home, for those of
/// one user that use different data folders.
std::vector<std::filesystem::path> practiceFolders(const Environment& environment,
                                                   const std::filesystem::path& dataFolder);

/// By what a trainer tells recorders that the keys struck now are practice: a shared lock on those folders,
/// in which nothing is made. Several trainers may hold it at once. A process that ends, however it does,
/// gives it back. It is of another kind than writers' locks, and none of them waits for the other.
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

/// Whether a trainer holds the lock on one of the folders. Takes no lock itself, so that those who ask do not
/// take each other for trainers.
bool isPractising(const std::vector<std::filesystem::path>& folders);

/// The same question for a thread that may not wait for a disk: asking opens nothing.
class PracticeWatch {
  public:
    explicit PracticeWatch(std::vector<std::filesystem::path> folders);

    /// Opens the folders again, for another thread to do now and then: at first a folder may not be there
    /// yet, and later another one may have its name.
    void lookAgain();
    bool isPractising() const;

  private:
    using Folders = std::vector<tapcore::Descriptor>;

    std::vector<std::filesystem::path> paths_;
    mutable std::mutex mutex_;
    std::shared_ptr<const Folders> folders_;
};

}  // namespace tappora

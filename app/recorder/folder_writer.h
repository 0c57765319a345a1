#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <thread>

#include "app/common/folder/data_folder.h"
#include "app/common/folder/folder_lock.h"
#include "app/common/folder/quiet_hours.h"
#include "app/common/folder/tell.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/recorder/day_book.h"
#include "app/recorder/known_folder.h"
#include "core/files/store.h"

namespace tappora {

/// How counts are written.
struct WritingOptions {
    FolderOptions folder;
    std::optional<tapcore::FileFormat> format;  ///< the folder's own at each write, when not given
    std::optional<std::string> board;           ///< as the day files are to name it
    std::optional<std::string> layout;
    /// What may be in the folder, asked for at each write.
    std::function<QuietRules(const Environment&)> rules = QuietRules::now;
    /// Waits between two attempts to have the lock.
    std::function<void()> pause = [] { std::this_thread::sleep_for(std::chrono::milliseconds(100)); };
};

/// Writes what a recorder counted into the data folder, and brings the months up to date.
class FolderWriter {
  public:
    /// What to do while another program writes in the folder.
    enum class Wait {
        yes,
        no,
        aWhile,  ///< so many pauses in the life of a writer
    };
    static constexpr int mostPauses = 50;

    FolderWriter(tapcore::Store store, WritingOptions options, const Environment& environment, Tell tell);

    /// Makes the folder of days and holds on to it as the one live recorder into it, for as long as this
    /// lives. Nothing is written from then on while the folder, or that of days in it, is gone (unmounted,
    /// renamed, removed), nor into another one in its place. One that holds the day last written, or the last
    /// that was there, is taken for the same: it was moved back, or brought back from a copy. Throws when
    /// another recorder holds it or it cannot be written.
    void hold();

    /// Adds counts to a day's file, or to an hour that waits. What it throws means that it did not.
    void write(const tapcore::Day& day, const DayCounts& counts, Wait wait);

    /// Takes hours that waited, and need not any longer, into their days: to be called when all that was
    /// counted is stored. What fails is tried again the next time and told once; it throws nothing.
    void takeInWaiting(Wait wait);
    /// Takes in hours that wait for other data folders, which were chosen before.
    void takeInElsewhere();

    /// Takes the days that are over into their months, when there are new ones, or when that failed the last
    /// time. What fails there is told once, and throws nothing: the counts are stored.
    void refreshMonths(Wait wait);

    /// Where the days are.
    std::filesystem::path days() const;

  private:
    std::optional<FolderLock> lock(Wait wait);
    void requireFolder();
    void holdDays();
    bool isOurs(const std::filesystem::path& folder) const;
    std::optional<tapcore::Day> lastDayHere() const;
    tapcore::Store storeNow() const;
    void tryRefreshing(Wait wait);
    void tellOfMonths(const std::string& problem);
    void wrote(const tapcore::Day& day);
    void takeInFor(const std::filesystem::path& folder);

    tapcore::Store store_;
    WritingOptions options_;
    Environment environment_;
    Tell tell_;
    int pausesLeft_ = mostPauses;
    KnownFolder base_;
    KnownFolder heldDays_;
    std::optional<FolderLock> recording_;
    std::optional<tapcore::Day> known_;  ///< the day last written, else the last that was there
    std::optional<tapcore::Day> oldestUnsummed_;
    std::optional<tapcore::Day> summedUpTo_;
    std::set<std::string> toldOfMonths_;  ///< since they were summed last
    Attempt takingIn_;
    bool isSettled_ = false;  ///< what an interrupted taking in left is tidied up
};

/// Throws Failure for a day that no file can be named after: years have four digits.
void requireStorable(const tapcore::Day& day);

}  // namespace tappora

#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "core/counting/day.h"
#include "core/files/data_listing.h"
#include "core/files/day_file.h"
#include "core/files/file_format.h"
#include "core/files/file_problem.h"
#include "core/files/folder_names.h"
#include "core/files/month_rollup.h"
#include "core/files/summary.h"
#include "core/files/waiting_hours.h"
#include "core/foundation/progress.h"
#include "core/foundation/written.h"

namespace tapcore {

class CountSum;
struct ChatFile;
struct FileCopy;
struct Layout;
struct PracticeDay;
struct PracticeHistory;

/// The one reader and writer of the data folder. It hides that a file may exist in either text format, and
/// that a shared folder holds a sub-folder for each machine, whose files are added together when read. It
/// writes only into this machine's own sub-folder.
///
/// It holds no state: everything is read from disk on each call. A folder that does not exist reads as empty.
/// One that cannot be listed does not: readers name it in `problems` and go on without it, and what changes
/// or removes files throws before its first change. It does no locking: callers serialise what reads, changes
/// and writes. What fails to write, make or remove something throws std::filesystem::filesystem_error with
/// the path, and leaves the former file in place.
/// What took effect does not throw: whoever `telling` names is told when it is not yet safe from a power cut.
class Store {
  public:
    std::filesystem::path root;      ///< the data folder
    FileFormat format;               ///< of what this machine writes; reading takes both
    std::optional<std::string> mac;  ///< this machine's sub-folder, in a folder that is shared

    /// Names that the data folder needs itself: no machine's sub-folder may take one.
    static constexpr auto ownFolders = tapcore::ownFolders;

    Store(std::filesystem::path folder, FileFormat written,
          std::optional<std::string> subfolder = std::nullopt)
        : root(std::move(folder)), format(written), mac(std::move(subfolder)) {
        if (mac && mac->empty()) mac.reset();  // that would be the folder itself, once more
    }

    /// A copy of this store that asks iCloud Drive for files not yet downloaded when it finds them.
    Store fetching(CloudFetch fetch) const;
    /// A copy of this store that tells of what it wrote that is not yet safe from a power cut.
    Store telling(WriteTold told) const;
    /// A copy of this store, of which hours of this machine wait in a folder outside of it: they are read
    /// with the days, and cleared with them. That folder need not exist.
    Store waitingIn(std::filesystem::path folder) const;
    /// A copy of this store that shows keys under other codes: in `readShown` and `summary`, never in files.
    Store remapping(KeyRemap remap) const;
    /// Tells whoever `telling` named of a write, unless it is safe.
    void warnUnlessSafe(const Written& written) const { tellUnlessSafe(written, told_); }

    // Where a data folder is, below the user's home folder.

    /// The folder to use when the user did not choose one: the app's folder in iCloud Drive, where that is
    /// on; else the folder of an earlier version that holds days; else "Documents/Tappora".
    static std::filesystem::path defaultRoot(const std::filesystem::path& home);
    /// The app's folder in iCloud Drive; nothing where that is off.
    static std::optional<std::filesystem::path> iCloudRoot(const std::filesystem::path& home);
    /// The app's folder in a given iCloud Drive, under its name or one of its earlier ones.
    static std::filesystem::path cloudFolder(const std::filesystem::path& drive);
    static std::filesystem::path legacyRoot(const std::filesystem::path& home);
    /// Whether several machines write a folder: it is in iCloud Drive, or holds a marked sub-folder.
    static bool isShared(const std::filesystem::path& folder, FileProblems* problems = nullptr);

    /// Where this machine writes: `root`, or its sub-folder.
    std::filesystem::path base() const;

    /// The folders whose files are added together, each as a store of its own: the machines' sub-folders, by
    /// name, and the own one.
    std::vector<Store> parts() const;

    /// All folders that are read: the parts, and the top of a shared folder, for what is there from before
    /// it was shared.
    std::vector<Store> readParts(FileProblems* problems = nullptr) const;

    /// What this machine alone wrote.
    Store own() const { return single(base()); }

    /// The names of the machines' sub-folders; empty when only one machine writes here.
    std::vector<std::string> macs() const;

    /// The names, without extension, of the data files in "days", "months", "practice" or "reports" of every
    /// part. Files that iCloud Drive has not brought here yet count.
    std::set<std::string> names(std::string_view folder, FileProblems* problems = nullptr) const;

    /// The days that have a file, ascending.
    std::vector<Day> days(FileProblems* problems = nullptr) const;

    /// Whether there is any counted day, practice day or month.
    bool hasData() const;

    std::filesystem::path url(const Day& day) const;
    std::filesystem::path url(const WaitingHour& hour) const;
    std::filesystem::path urlForMonth(std::string_view month) const;

    /// The files of folder/name that exist in this one folder, in reading order.
    std::vector<std::filesystem::path> copies(std::string_view folder, std::string_view name) const;

    /// A day's counts, of all parts and copies added; empty without a file. Board, layout and other rows are
    /// those of the first part that has them. A file that cannot be read, is not here yet or is not UTF-8 is
    /// named in `problems`; its valid rows count.
    DayFile read(const Day& day, FileProblems* problems = nullptr) const;
    /// The same as it is to be shown: with keys under the codes that `remapping` named.
    DayFile readShown(const Day& day, FileProblems* problems = nullptr) const;
    /// A day's counts, read already, as they are to be shown.
    DayFile shown(DayFile file) const;
    /// A day's counts in this machine's own files alone.
    DayFile readOwn(const Day& day, FileProblems* problems = nullptr) const;

    /// Adds all numbers of a day's files, of all parts: whether its counts can be added up.
    void addNumbers(CountSum& sum, const Day& day) const;
    /// Throws filesystem_error with the path when counts cannot be added to the own files of a day, since
    /// their sum is too large.
    void requireFits(const Day& day, const Tally& more) const;

    /// Adds counts to the own file of a day: the larger peak is kept, paused minutes add, and board and
    /// layout are those given, when given. Both formats become one. Throws, and changes nothing, when a file
    /// there cannot be read whole, or the sum is too large. One with lines that cannot be used is kept beside
    /// as it was.
    void add(const Tally& tally, std::int64_t peakPerMinute, std::int64_t pausedMinutes,
             const std::optional<std::string>& board, const std::optional<std::string>& layout,
             const Day& day) const;

    /// What becomes of lines that cannot be used when their file is rewritten: `kept` keeps the old one.
    enum class UnusedLines { kept, dropped };
    /// Changes the own file of a day as a whole, on the same conditions as `add`. Hours of the day that
    /// waited are added first, and wait no longer: a crash at any moment leaves each of them in one place.
    void change(const Day& day, UnusedLines unused, const std::function<void(DayFile&)>& change,
                const std::vector<WaitingHour>& takenIn = {}) const;

    /// Removes what an interrupted change left of the copies of a day. Throws filesystem_error with the path.
    void settle(const Day& day) const;

    // Hours that wait for their place in the folder (core/files/waiting_hours.h): of a store that has a
    // folder for them.

    /// Those there are, ascending. Throws filesystem_error when they cannot be listed.
    std::vector<WaitingHour> waitingHours() const;
    /// The counts of one; empty when it is not there. Throws filesystem_error when it cannot be read.
    DayFile readWaiting(const WaitingHour& hour) const;
    /// Adds counts to one. Throws filesystem_error with the path,
    /// and adds nothing, when its file cannot be read or written.
    void addWaiting(const WaitingHour& hour, const DayFile& counts) const;
    /// Removes what an interrupted change left of hours that it had taken in.
    void settleWaiting() const;

    /// Writes a file whole, and its folder when missing.
    static Written write(std::string_view text, const std::filesystem::path& url);

    /// Removes the copy of base/folder/name in the format not written, `keep` excepted.
    void removeOthers(std::string_view folder, std::string_view name,
                      const std::filesystem::path& keep) const;

    /// So many days up to and including `endingOn`, added up in ascending order: one entry a day, all
    /// machines together, a day without a file as an empty one. Keys are under the codes that `remapping`
    /// named.
    Summary summary(std::int64_t days, const Day& endingOn, const Calendar& calendar,
                    FileProblems* problems = nullptr) const;

    // Month rollups, named like "2026-09".

    /// The rollup of a month, of all parts merged; nothing when no part has a rollup. Both formats of a
    /// rollup are one.
    std::optional<MonthRollup> readRollup(std::string_view month, FileProblems* problems = nullptr) const;
    /// Makes this machine's rollup of a month again from its days before `today`, and removes it when there
    /// are no such days. Does nothing, and returns false, for a name that is not a month's, and while one of
    /// those days is not here yet, cannot be read, or has counts too large to be added up; it is named in
    /// `problems`.
    bool rebuildRollup(std::string_view month, const Day& today, FileProblems* problems = nullptr) const;
    /// Whether this machine's rollup of a month is missing, does not list exactly the month's own days before
    /// `today`, or may be older than one of their files.
    bool isOutOfDate(std::string_view month, const Day& today) const;
    /// Rebuilds this machine's rollups that are out of date and removes those of months without days. False
    /// when it was interrupted. What keeps a month from being summed is named in `problems`.
    bool refreshRollups(const Day& today, const Progress& progress = {},
                        FileProblems* problems = nullptr) const;

    // The conversation with the assistant.

    std::filesystem::path chatURL() const;
    /// The current conversation, in whichever format it was written; empty when not found. Throws
    /// filesystem_error for a file that cannot be read or is not UTF-8.
    ChatFile readChat() const;
    /// Replaces the current conversation, and takes it into this format.
    void writeChat(const ChatFile& chat) const;
    /// Puts the current conversation among the earlier ones, under its moment, and gives its new path;
    /// nothing when there was no conversation. Where that second is taken, the next free one names it.
    std::optional<std::filesystem::path> shelveChat(Instant at, const Calendar& calendar) const;
    /// The earlier conversations' files, newest first. A folder that cannot be listed gives an empty list,
    /// and is named in `problems`.
    std::vector<std::filesystem::path> chatHistory(FileProblems* problems = nullptr) const;

    // Practice days, core/practice/practice_day.h.

    std::filesystem::path practiceURL(const Day& day) const;
    /// The days that have a practice file, ascending.
    std::vector<Day> practiceDays(FileProblems* problems = nullptr) const;
    /// A day's practice, of all parts and copies merged; an empty day without a file.
    PracticeDay readPractice(const Day& day, FileProblems* problems = nullptr) const;
    /// The practice of all days that have a file: what streaks, totals, recent days and bests are taken from.
    PracticeHistory practiceHistory(FileProblems* problems = nullptr) const;
    /// Adds what was practised to the own file of a day; the layout is the one given, when one is. Both
    /// formats become one. Throws, and changes nothing, when a file there cannot be read whole. One that
    /// holds more than a day of practice, or rows that cannot be used, is kept beside as it was; each such
    /// line is named in `problems`.
    void addPractice(const PracticeDay& practised, const Day& day, FileProblems* problems = nullptr) const;

    // Changing what is stored, in this machine's own folder alone. What cannot be changed whole is not
    // changed at all.

    /// Whether the own folder holds a day, month or practice file in the other format. A folder that cannot
    /// be listed is named in `problems`.
    bool needsConversion(FileProblems* problems = nullptr) const;
    /// Writes each such file in this format and removes the other copy. May be interrupted at any point and
    /// run again; false when it was.
    bool convert(const Progress& progress = {}) const;

    /// Removes a day's counts, from its month's rollup too.
    void clearDay(const Day& day) const;
    /// Forgets which keys were pressed, keeping how many, in every day and month. May be interrupted and run
    /// again; false when it was.
    bool resetHeatmap(const Progress& progress = {}) const;
    /// Forgets which shortcuts were pressed, in every day and month, in the same way.
    bool resetShortcuts(const Progress& progress = {}) const;
    /// Removes every day of practice.
    void resetPractice() const;
    /// Removes every day and month of counts.
    void clearCounts() const;
    /// Removes counts, practice, reports and conversations.
    void clearAll() const;

    // The user's own layouts, a file "ID.json" each. Defined beside the record of a layout.

    /// Where this machine writes them.
    std::filesystem::path ownLayoutsURL() const;
    /// Those of all parts; of two with one id, this machine's. A file that is not a layout, or whose name is
    /// not its id, is named in `problems` and left out, and so is a folder that cannot be listed.
    std::vector<Layout> ownLayouts(FileProblems* problems = nullptr) const;
    /// Whether an id may name a file and a setting: 1 to 64 of a-z, 0-9, "-" and "_", the first a letter or a
    /// digit; and not "auto" or "system", which mean the system's layout.
    static bool isSafeLayoutID(std::string_view id);
    /// Writes a layout, over the one of its id. Returns where. Throws LayoutProblem for an id that is not
    /// safe.
    std::filesystem::path saveOwnLayout(const Layout& layout) const;

  private:
    /// A store of one folder alone.
    Store single(std::filesystem::path folder) const;
    std::vector<std::string> markedFolders(FileProblems* problems) const;
    std::vector<Store> parts(FileProblems* problems) const;
    /// The folders of that name, one a part, less those that cannot be listed.
    std::vector<std::filesystem::path> foldersToRead(std::string_view folder, FileProblems* problems) const;
    /// The parts of which that folder can be listed.
    std::vector<Store> partsToRead(std::string_view folder, FileProblems* problems) const;
    /// The copies of a day in this part, with its hours among those that wait.
    std::vector<FileCopy> copiesOf(const Day& day, const std::vector<WaitingHour>& waiting,
                                   const DataListing* listing = nullptr) const;
    /// The copies of a day on this machine, to change them: of waiting hours only those to be taken in, and
    /// those that an interrupted change has taken in.
    std::vector<FileCopy> copiesToChange(const Day& day, const std::vector<WaitingHour>& takenIn) const;
    std::vector<WaitingHour> waitingHours(FileProblems* problems) const;
    std::vector<std::filesystem::path> waitingFiles(const Day& day,
                                                    const std::vector<WaitingHour>& hours) const;
    void forgetWaiting(const std::function<void(DayFile&)>& forget) const;
    /// Removes those of a day, or all for "".
    void clearWaiting(std::string_view day) const;
    /// The days that the files of a folder are named after, ascending.
    std::vector<Day> daysIn(std::string_view folder, FileProblems* problems) const;

    /// Changes the own file of a day, whose copies were read, as `change` does.
    void changeRead(const Day& day, const std::vector<FileCopy>& copies, UnusedLines unused,
                    const std::function<void(DayFile&)>& change) const;
    /// `lastWritten`, since 1970, is when the rollup says afterwards that it was written; now when it is not
    /// given.
    void changeRollup(std::string_view month, const std::function<void(MonthRollup&)>& change,
                      std::optional<std::chrono::nanoseconds> lastWritten = std::nullopt) const;
    /// Makes this machine's rollup of a day's month again without that day.
    void takeOutOfRollup(const Day& day) const;
    bool forget(const std::function<void(DayFile&)>& inDay, const std::function<void(MonthRollup&)>& inMonth,
                const Progress& progress) const;
    void convertFile(std::string_view folder, const std::string& name,
                     std::optional<std::chrono::nanoseconds> lastWritten) const;
    // Defined beside the record of a practice day.
    void changePractice(const Day& day, const std::function<void(PracticeDay&)>& change,
                        FileProblems* problems = nullptr) const;
    void convertPractice(const std::string& name) const;

    bool single_ = false;
    CloudFetch fetch_;
    WriteTold told_;
    std::optional<KeyRemap> remap_;                 ///< of what is shown
    std::optional<std::filesystem::path> waiting_;  ///< where hours of this machine wait
};

}  // namespace tapcore

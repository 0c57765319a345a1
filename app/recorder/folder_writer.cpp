#include "app/recorder/folder_writer.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

#include "app/common/folder/waiting_place.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "core/files/data_listing.h"
#include "core/files/folder_config.h"
#include "core/foundation/file_io.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;

/// Runs what throws filesystem_error, and throws a Failure instead.
void naming(auto work) try { work(); } catch (const fs::filesystem_error& error) {
    throw Failure(error);
}

FolderLock lockAtOnce(const Environment& environment, const fs::path& folder) {
    auto lock = tryLockForWriting(environment, folder);
    if (!lock) throw Failure(folder.string(), "another program is writing in it");
    return std::move(*lock);
}

tapcore::DayFile fileOf(const DayCounts& counts, const WritingOptions& options) {
    tapcore::DayFile file;
    file.merge(counts.tally, counts.peakPerMinute, counts.pausedMinutes);
    file.board = options.board;
    file.layout = options.layout;
    return file;
}

}  // namespace

void requireStorable(const tapcore::Day& day) {
    if (tapcore::Day::parse(day.description()) != day)
        throw Failure(day.description(), "years have four digits in the names of files");
}

FolderWriter::FolderWriter(tapcore::Store store, WritingOptions options, const Environment& environment,
                           Tell tell)
    : store_(store.telling(complainOnce(tell))),
      options_(std::move(options)),
      environment_(environment),
      tell_(std::move(tell)),
      takingIn_(tell_, "hours wait on: ") {}

fs::path FolderWriter::days() const { return store_.base() / "days"; }

void FolderWriter::hold() {
    naming([&] {
        store_.warnUnlessSafe(tapcore::makeFolders(days()));
        base_ = KnownFolder(store_.base());
        holdDays();
        known_ = lastDayHere();
    });
}

void FolderWriter::holdDays() {
    if (::access(days().c_str(), W_OK | X_OK) < 0)
        throw fs::filesystem_error("cannot write", days(), {errno, std::generic_category()});
    recording_.reset();
    heldDays_ = KnownFolder();  // nothing is written before the new lock is had
    recording_ = tryLockForRecording(environment_, days());
    if (!recording_) throw Failure(store_.root.string(), "another recorder is counting into it");
    heldDays_ = KnownFolder(days());
}

std::optional<tapcore::Day> FolderWriter::lastDayHere() const {
    std::optional<tapcore::Day> last;
    tapcore::FileProblems unlisted;  // whoever sums the months names it
    for (const tapcore::ListedFile& file : tapcore::dataFiles(days(), unlisted))
        if (file.isHere && tapcore::isDayName(file.name))
            last = std::max(last, tapcore::Day::parse(file.name));
    return last;
}

/// What is held may be gone, and something else may have its name: a mount point shows the folder below.
void FolderWriter::requireFolder() {
    if (!base_.isOpen()) return;
    const fs::path base = store_.base();
    const bool isSame = base_.isAt(base);
    if (isSame && heldDays_.isAt(days())) return;
    const fs::path changed = isSame ? days() : base;
    if (!tapcore::isThere(changed)) throw Failure(changed.string(), "the folder is gone");
    if (!isOurs(base)) throw Failure(changed.string(), "another folder has taken its place");
    if (!isSame) base_ = KnownFolder(base);
    holdDays();
    if (!known_)
        tell_(changed.string() +
              ": another folder has taken its place; nothing was stored yet, so counts go there");
}

bool FolderWriter::isOurs(const fs::path& folder) const {
    const fs::path days = folder / "days";
    if (!known_) return tapcore::isThere(days);
    const auto& formats = tapcore::FileFormat::allCases;
    return std::any_of(formats.begin(), formats.end(), [&](const tapcore::FileFormat format) {
        return tapcore::isThere(days / fmt::format("{}.{}", known_->description(), format.fileExtension()));
    });
}

std::optional<FolderLock> FolderWriter::lock(Wait wait) {
    if (wait == Wait::yes) return lockForWriting(environment_, store_.root);
    auto lock = tryLockForWriting(environment_, store_.root);
    for (; !lock && wait == Wait::aWhile && pausesLeft_ > 0; --pausesLeft_) {
        options_.pause();
        lock = tryLockForWriting(environment_, store_.root);
    }
    return lock;
}

/// `folder convert` may have given the folder another format meanwhile. Where the format cannot be read,
/// nothing is written.
tapcore::Store FolderWriter::storeNow() const {
    tapcore::Store store = store_;
    store.format =
        options_.format ? *options_.format : tapcore::FolderConfig::readToChange(store.root).format;
    return store;
}

void FolderWriter::write(const tapcore::Day& day, const DayCounts& counts, Wait wait) {
    requireStorable(day);
    naming([&] {
        requireFolder();
        const auto locked = lock(wait);
        if (!locked) throw Failure(store_.root.string(), "another program is writing in it");
        requireFolder();  // the lock may have been waited for
        const QuietRules rules = options_.rules(environment_);
        if (rules.mayKeepWaiting()) (void)madeWaitingPlace(environment_, store_.root);
        if (QuietHours(storeNow(), rules).add(day, fileOf(counts, options_)) == QuietHours::Place::inFolder)
            wrote(day);
    });
}

void FolderWriter::wrote(const tapcore::Day& day) {
    known_ = day;
    oldestUnsummed_ = std::min(oldestUnsummed_.value_or(day), day);
}

void FolderWriter::takeInWaiting(Wait wait) {
    takingIn_.run([&] {
        naming([&] {
            const auto place = waitingPlace(environment_, store_.root);
            isSettled_ = isSettled_ || !place || !tapcore::isThere(*place);
            if (isSettled_ && store_.waitingHours().empty()) return;
            requireFolder();
            const auto locked = lock(wait);
            if (!locked) return;
            requireFolder();
            if (!isSettled_) storeNow().settleWaiting();
            isSettled_ = true;
            for (const tapcore::Day& day : QuietHours(storeNow(), options_.rules(environment_)).takeIn())
                wrote(day);
        });
    });
}

void FolderWriter::takeInElsewhere() {
    for (const fs::path& folder : foldersWaitedFor(environment_))
        Attempt(tell_, "hours wait on: ").run([&] { naming([&] { takeInFor(folder); }); });
}

/// A folder that is not there now, as on a disk that is not mounted, is named, and left for another time.
void FolderWriter::takeInFor(const fs::path& folder) {
    const auto place = waitingPlace(environment_, folder);
    if (place == waitingPlace(environment_, store_.root) || tapcore::waitingHours(*place).empty()) return;
    const LockedStore locked({.folder = folder.string(), .today = std::nullopt}, environment_, false, tell_,
                             lockAtOnce);
    (void)QuietHours(locked.store, options_.rules(environment_)).takeIn();
}

void FolderWriter::refreshMonths(Wait wait) {
    try {
        naming([&] { tryRefreshing(wait); });
    } catch (const std::exception& error) {
        tellOfMonths(std::string("the months are not summed: ") + error.what());
    }
}

/// What fails is tried again with every minute, and told once.
void FolderWriter::tellOfMonths(const std::string& problem) {
    if (toldOfMonths_.insert(problem).second) tell_(problem);
}

void FolderWriter::tryRefreshing(Wait wait) {
    const Environment current = atThisMoment(environment_);
    const tapcore::Day now = today(options_.folder, current, current.calendar);
    if (summedUpTo_ == now && !(oldestUnsummed_ && *oldestUnsummed_ < now)) return;
    const auto locked = lock(wait);
    if (!locked) return;
    requireFolder();
    tapcore::FileProblems problems;
    storeNow().refreshRollups(now, {}, &problems);
    for (const auto& problem : problems) tellOfMonths(described(problem));
    if (!problems.empty()) return;
    summedUpTo_ = now;
    oldestUnsummed_.reset();
    toldOfMonths_.clear();
}

}  // namespace tappora

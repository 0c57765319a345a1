#include <sys/prctl.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "app/common/folder/practice_lock.h"
#include "app/common/folder/settings.h"
#include "app/common/folder/tell.h"
#include "app/common/program.h"
#include "app/common/system/directories.h"
#include "app/common/system/environment.h"
#include "app/common/system/moment.h"
#include "app/common/widget/shown_pause.h"
#include "app/common/widget/widget_file.h"
#include "app/common/widget/widget_sums.h"
#include "app/recorder/control_desk.h"
#include "app/recorder/event_source.h"
#include "app/recorder/live_output.h"
#include "app/recorder/live_recorder.h"
#include "app/recorder/lock_watch.h"
#include "app/recorder/pause_file.h"
#include "app/recorder/pause_keeper.h"
#include "app/recorder/pause_switch.h"
#include "app/recorder/record_command.h"
#include "app/recorder/report_keeper.h"
#include "core/files/store.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;

using Wait = FolderWriter::Wait;

/// Waits for a folder's lock, and says so, until a signal ends that.
LockForWriting waitingUntil(const std::function<bool()>& endsSoon, const Tell& tell) {
    return [=](const Environment& environment, const fs::path& folder) {
        constexpr const char* busy = "another program is writing in it";
        for (bool isFirst = true;; isFirst = false) {
            if (auto lock = tryLockForWriting(environment, folder)) return std::move(*lock);
            if (isFirst) tell(folder.string() + ": " + busy + "; waiting until it is done");
            if (endsSoon()) throw Failure(folder.string(), busy);
        }
    };
}

/// The rules for what is typed now: what is typed in a trainer does not count.
EventRules::Options liveRulesFor(const RecordOptions& options, const PracticeWatch& practice) {
    EventRules::Options rules = rulesFor(options);
    rules.isPractising = [&practice] { return practice.isPractising(); };
    return rules;
}

/// Brings the widgets' file up to date. What fails is told once, and stops nothing.
std::function<void()> widgetUpdater(const FolderOptions& folder, const Environment& environment,
                                    const Tell& tell) {
    return [=, attempt = Attempt(tell, "the widgets stay as they are: "), sums = WidgetSums(),
            tellProblem = tellingOnce(tell)]() mutable {
        attempt.run([&] {
            const Environment current = atThisMoment(environment);
            sums.require(folder, current);  // or the recorder would end, with what it counts
            tapcore::FileProblems problems;
            const auto snapshot = widgetSnapshot(folder, current, &problems);
            if (!problems.empty() && showsNothing(snapshot))
                throw Failure(problems.front().path.string(), problems.front().why);
            writeWidgetFile(snapshot, current);
            complainOf(problems, tellProblem);
        });
    };
}

PauseFiles pauseFiles(const Environment& environment, const fs::path& folder) {
    PauseFiles files{.kept = pauseFile(environment, folder)};
    if (dataDirectory(environment.variable)) files.shown = shownPauseFile(environment);
    return files;
}

/// A moment as clocks here show it.
std::string onTheClock(const Environment& environment, tapcore::Instant moment) {
    const Environment current = atThisMoment(environment);
    return clockText(moment, current.now, current.calendar);
}

/// Finds what is wrong with the choice of a folder, and makes nothing.
fs::path chosenFolder(const FolderOptions& options, const Environment& environment) {
    (void)today(options, environment, environment.calendar);
    return openStore(options, environment).root;
}

/// All that takes part in recording.
class LiveCommand {
  public:
    LiveCommand(const RecordOptions& options, const Environment& environment, LiveOutput& output);

    void run() {
        keeper_.restore(hostNow());
        heedLock();
        recorder_.run(*source_);
    }

  private:
    LiveWorld world();
    DayBook::Write writing(Wait wait) {
        return [this, wait](const tapcore::Day& day, const DayCounts& counts) {
            writer_->write(day, counts, wait);
        };
    }
    void makeReady(const std::function<bool()>& endsSoon);
    void keepUp();
    void lookAgain();
    void heedLock();

    const RecordOptions& options_;
    const Environment& environment_;
    LiveOutput& output_;
    const Tell tell_ = [this](const std::string& text) { output_.tell(text); };
    const fs::path folder_;
    PracticeWatch practice_;
    std::optional<FolderWriter> writer_;
    ReportKeeper reports_;
    PauseSwitch pauses_;
    PauseKeeper keeper_;
    std::optional<LockWatch> lockWatch_;
    Attempt readingSettings_;
    bool heedsLock_ = true;
    LiveRecorder recorder_;
    ControlDesk desk_;
    const std::unique_ptr<EventSource> source_;
};

LiveCommand::LiveCommand(const RecordOptions& options, const Environment& environment, LiveOutput& output)
    : options_(options),
      environment_(environment),
      output_(output),
      folder_(fs::absolute(chosenFolder(options.folder, environment))),
      practice_(practiceFolders(environment, folder_)),
      reports_(options.folder, environment, tell_),
      keeper_(
          pauses_, pauseFiles(environment, folder_),
          [&](tapcore::Instant moment) { return onTheClock(environment, moment); }, tell_),
      readingSettings_(tell_),
      recorder_(liveRulesFor(options, practice_), pauses_, world()),
      desk_(
          folder_, environment, pauses_, keeper_, [this] { return recorder_.status(); }, tell_),
      source_(openInputDevices(sourceFor(options, environment))) {}

LiveWorld LiveCommand::world() {
    LiveWorld world{.now = hostNow,
                    .eachMinute = [this] { lookAgain(); },
                    .calendar = [this] { return atThisMoment(environment_).calendar; },
                    .ready = [this](const std::function<bool()>& endsSoon) { makeReady(endsSoon); },
                    .tryWrite = writing(Wait::no),
                    .write = writing(Wait::aWhile),
                    .stored =
                        [this, updateWidgets = widgetUpdater(options_.folder, environment_, tell_)] {
                            writer_->refreshMonths(Wait::no);
                            updateWidgets();
                        },
                    .allStored = [this] { keepUp(); },
                    .tell = tell_};
    if (options_.watch) world.watch = [this](const Lines& lines) { return output_.watch(lines); };
    world.serve = [this](int handedOver) { desk_.serveUntil(handedOver); };
    world.followPause = [this] { keeper_.follow(hostNow()); };
    return world;
}

void LiveCommand::makeReady(const std::function<bool()>& endsSoon) {
    writer_.emplace(writerFor(options_, environment_, tell_, waitingUntil(endsSoon, tell_)));
    writer_->hold();
    writer_->takeInElsewhere();
    keepUp();
    lookAgain();
    tell_("counts go to " + writer_->days().string());
}

/// What there is to do in the folder once all that was counted is in it.
void LiveCommand::keepUp() {
    writer_->takeInWaiting(Wait::no);
    const Environment current = atThisMoment(environment_);
    reports_.keepUp(today(options_.folder, current, current.calendar));
}

/// For what may have come or gone since the last minute.
void LiveCommand::lookAgain() {
    practice_.lookAgain();
    desk_.lookAgain();
    heedLock();
}

/// Has a locked session not count, as the settings say now. While they cannot be read, it stays as it was.
void LiveCommand::heedLock() {
    readingSettings_.run([&] { heedsLock_ = Settings::read(environment_).flag("record.pauseWhenLocked"); });
    if (heedsLock_ && !lockWatch_) lockWatch_.emplace(pauses_);
    if (!heedsLock_) lockWatch_.reset();
}

}  // namespace

void recordLive(const RecordOptions& options, const Environment& environment) {
    LiveOutput output;
    // No other program of this user may look into the process, and no core dump holds what it counts.
    ::prctl(PR_SET_DUMPABLE, 0);
    LiveCommand(options, environment, output).run();
}

}  // namespace tappora

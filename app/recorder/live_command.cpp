#include <sys/prctl.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "app/common/folder/tell.h"
#include "app/common/folder/practice_lock.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/common/widget/widget_file.h"
#include "app/recorder/event_source.h"
#include "app/recorder/live_output.h"
#include "app/recorder/live_recorder.h"
#include "app/recorder/record_command.h"
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
    return [=, attempt = Attempt(tell, "the widgets stay as they are: ")]() mutable {
        attempt.run([&] {
            const Environment current = atThisMoment(environment);
            requireWidgetSums(folder, current);  // or the recorder would end, with what it counts
            tapcore::FileProblems problems;
            const auto snapshot = widgetSnapshot(folder, current, &problems);
            if (!problems.empty() && showsNothing(snapshot))
                throw Failure(problems.front().path.string(), problems.front().why);
            writeWidgetFile(snapshot, current);
        });
    };
}

/// Finds what is wrong with the choice of a folder, and makes nothing.
fs::path chosenFolder(const FolderOptions& options, const Environment& environment) {
    (void)today(options, environment, environment.calendar);
    return openStore(options, environment).root;
}

}  // namespace

void recordLive(const RecordOptions& options, const Environment& environment) {
    LiveOutput output;
    const Tell tell = [&](const std::string& text) { output.tell(text); };
    PracticeWatch practice(practiceFolders(environment, chosenFolder(options.folder, environment)));
    std::optional<FolderWriter> writer;
    // No other program of this user may look into the process, and no core dump holds what it counts.
    ::prctl(PR_SET_DUMPABLE, 0);
    const auto writing = [&](Wait wait) {
        return [&writer, wait](const tapcore::Day& day, const DayCounts& counts) {
            writer->write(day, counts, wait);
        };
    };
    LiveWorld world{
        .now = hostNow,
        .eachMinute = [&] { practice.lookAgain(); },
        .calendar = [&] { return atThisMoment(environment).calendar; },
        .ready =
            [&](const std::function<bool()>& endsSoon) {
                writer.emplace(writerFor(options, environment, tell, waitingUntil(endsSoon, tell)));
                writer->hold();
                practice.lookAgain();
                tell("counts go to " + writer->days().string());
            },
        .tryWrite = writing(Wait::no),
        .write = writing(Wait::aWhile),
        .stored =
            [&, updateWidgets = widgetUpdater(options.folder, environment, tell)] {
                writer->refreshMonths(Wait::no);
                updateWidgets();
            },
        .tell = tell};
    if (options.watch) world.watch = [&](const Lines& lines) { return output.watch(lines); };
    const auto source = openInputDevices(sourceFor(options, environment));
    LiveRecorder(liveRulesFor(options, practice), std::move(world)).run(*source);
}

}  // namespace tappora

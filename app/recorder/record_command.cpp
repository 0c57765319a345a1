#include "app/recorder/record_command.h"

#include <fmt/format.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "app/common/command_line/command_line.h"
#include "app/common/folder/attempt.h"
#include "app/common/folder/practice_lock.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/common/system/signals.h"
#include "app/common/terminal/line_output.h"
#include "app/common/widget/widget_file.h"
#include "app/recorder/event_source.h"
#include "app/recorder/folder_writer.h"
#include "app/recorder/live_recorder.h"
#include "app/recorder/recording_file.h"
#include "app/recorder/replay.h"
#include "core/counting/counter.h"
#include "core/files/store.h"
#include "core/foundation/integers.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;

using Wait = FolderWriter::Wait;

WritingOptions writingFor(const RecordOptions& options) {
    return {.folder = options.folder,
            .format = options.format ? std::optional(parseFormat("--format", *options.format)) : std::nullopt,
            .board = options.board,
            .layout = options.layout};
}

FolderWriter writerFor(const RecordOptions& options, const Environment& environment, const Tell& tell,
                       const LockForWriting& lock = lockForWriting) {
    WritingOptions writing = writingFor(options);
    const tapcore::Store store = LockedStore(options.folder, environment, options.shared, tell, lock).store;
    return {store, std::move(writing), environment, tell};
}

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

/// An ISO board is one by its name: "macbook-iso".
BoardShape shapeOf(const RecordOptions& options) {
    const bool isIso = options.isIso || (options.board && options.board->ends_with("-iso"));
    return isIso ? BoardShape::iso : BoardShape::ansi;
}

EventRules::Options rulesFor(const RecordOptions& options) {
    return {.countsMouse = !options.noMouse, .board = shapeOf(options), .remappers = options.remappers};
}

void printLine(const std::string& line) { print(line + '\n'); }

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

tapcore::Instant startOf(const RecordOptions& options, const tapcore::Calendar& calendar) {
    const std::string text = options.starting.value_or("");
    const auto moment = momentOf(text, calendar);
    if (!moment)
        throw UsageError(fmt::format("--starting: not a local time: {}; use YYYY-MM-DDTHH:MM:SS", text));
    return *moment;
}

void warnOf(const std::string& file, const Recording& recording) {
    if (lacksEvents(recording)) complain(file + ": some presses were not seen: the machine was too busy");
    if (recording.keysAreMasked)
        complain(
            file +
            ": keys are not known: libinput record wrote KEY_A for most; their presses count, without the "
            "key. With --show-keycodes it writes them as they are");
    else if (maybeMasked(recording))
        complain(file +
                 ": of letters and digits only A is pressed: if libinput record wrote this without "
                 "--show-keycodes, keys are not known");
}

void printCounts(const DayBook& book) {
    for (const auto& [day, counts] : book.days())
        fmt::print("{}: presses {}, clicks {}\n", day.description(), counts.tally.total(),
                   counts.tally.mouseTotal().allClicks());
    if (book.days().empty()) fmt::print("nothing in it is counted\n");
}

/// Stores all days, or says of which it could not: a second replay would count the others again.
void storeAll(const DayBook& book, const DayBook::Write& write) {
    DayBook left = book;
    try {
        for (const auto& [day, counts] : book.days()) requireStorable(day);
        left.store(write);
    } catch (const std::exception& error) {
        std::string stored;
        for (const auto& [day, counts] : book.days())
            if (!left.days().contains(day)) stored += (stored.empty() ? "" : ", ") + day.description();
        throw Failure(error.what(), stored.empty() ? "nothing is stored"
                                                   : "not stored; stored already: " + stored +
                                                         "; another replay would count that twice");
    }
}

/// What a recording counts, by day. Each line of the event watch goes to `watch`.
DayBook countsOf(const Recording& recording, tapcore::Instant starting, const RecordOptions& options,
                 const tapcore::Calendar& calendar, EventRules::Watch watch) {
    tapcore::Counter counter;
    DayBook book;
    CountingClock clock(calendar, counter, book);
    EventRules rules(rulesFor(options), counter, std::move(watch));
    replay(recording, starting, clock, rules);
    clock.finish();
    if (recording.keysAreMasked) book.forgetKey(maskedKey);
    return book;
}

/// What was counted is stored before any of it is printed: nobody who reads it can be in the way.
void requirePrinted() {
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return;
    throw Failure("standard output",
                  "cannot write; the counts are stored, and another replay would count them twice");
}

void replayFile(const std::string& file, const RecordOptions& options, const Environment& environment) {
    const tapcore::Calendar& calendar = environment.calendar;
    const tapcore::Instant starting = startOf(options, calendar);
    const Recording recording = readRecording(file);
    warnOf(file, recording);
    FolderWriter writer = writerFor(options, environment, complain);
    const DayBook book = countsOf(recording, starting, options, calendar, {});
    storeAll(book,
             [&](const tapcore::Day& day, const DayCounts& counts) { writer.write(day, counts, Wait::yes); });
    writer.refreshMonths(Wait::yes);
    if (options.watch) countsOf(recording, starting, options, calendar, printLine);
    printCounts(book);
    requirePrinted();
}

SourceOptions sourceFor(const RecordOptions& options, const Environment& environment) {
    return {.seat = environment.variable("XDG_SEAT").value_or("seat0"),
            .ignored = options.ignored,
            .tapsClick = options.taps};
}

/// What a live recorder says, to readers that it does not wait for.
class LiveOutput {
  public:
    LiveOutput() = default;
    LiveOutput(const LiveOutput&) = delete;
    LiveOutput& operator=(const LiveOutput&) = delete;
    ~LiveOutput() {
        watched_.end();
        tellDropped();
        told_.end();
    }

    void tell(std::string_view text) { told_.write(complaint(text)); }

    /// Shows lines of the event watch; false when nobody can read them any more.
    bool watch(const Lines& lines) {
        for (const std::string& line : lines.kept) watched_.write(line);
        watched_.drop(lines.dropped);
        const bool wasStalled = std::exchange(isStalled_, watched_.isStalled());
        if (isStalled_ && !wasStalled && !watched_.isGone()) tell(whyDropped());
        if (!isStalled_) tellDropped();
        return !watched_.isGone();
    }

  private:
    std::string whyDropped() const {
        if (!watched_.failure()) return "nobody reads the lines of --watch: they are dropped";
        return "standard output: " + watched_.failure().message() + "; the lines of --watch are dropped";
    }

    void tellDropped() {
        const std::int64_t dropped = watched_.takeDropped();
        if (dropped == 0 || watched_.isGone()) return;
        tell(fmt::format("{} of --watch dropped",
                         tapcore::counted(static_cast<std::size_t>(dropped), "line", "lines")));
    }

    SignalQueue broken_{SIGPIPE};  // also at the end, when the recorder holds back no signals any more
    LineOutput watched_{STDOUT_FILENO};
    LineOutput told_{STDERR_FILENO};
    bool isStalled_ = false;
};

/// Finds what is wrong with the choice of a folder, and makes nothing.
fs::path chosenFolder(const FolderOptions& options, const Environment& environment) {
    (void)today(options, environment, environment.calendar);
    return openStore(options, environment).root;
}

/// The folder is made once there are devices, so that a start that is refused leaves nothing behind.
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

}  // namespace

void addRecordOptions(CommandSyntax& command, RecordOptions& options) {
    command.describe("Count what is typed and clicked, hour by hour: live, until Ctrl+C, or from a recording",
                     "tappora record --replay typing.evemu --starting 2026-09-20T09:00:00");
    addFolderOptions(command, options.folder);
    command.flag("--shared", options.shared,
                 "Write to a sub-folder of this machine's own, for a folder that several machines share");
    command
        .option("--format", options.format,
                "The format of the day files, org or markdown; the folder's own when not given")
        .type("FORMAT");
    command.option("--board", options.board, "The board to name in the day files").type("NAME");
    command.option("--layout", options.layout, "The layout to name in the day files").type("NAME");
    command.flag("--iso", options.isIso,
                 "Count an ISO board, with a key between left shift and Z; implied by --board NAME-iso");
    command.flag("--no-mouse", options.noMouse, "Count only keys");
    command.flag("--taps", options.taps, "Count taps on a touchpad as clicks");
    command.flag("--watch", options.watch,
                 "Print for each press and click whether it counts, and if not, why");
    command.option("--ignore", options.ignored, "Ignore the device of this name").type("NAME");
    command
        .option("--remapper", options.remappers,
                "Count the virtual keyboard of a key remapper, with NAME in the device's name")
        .type("NAME");
    Option replay =
        command.option("--replay", options.replay, "Count a recording of evemu-record or libinput record")
            .type("FILE");
    Option starting =
        command.option("--starting", options.starting, "The local time of the recording's first event")
            .type("YYYY-MM-DDTHH:MM:SS");
    replay.needs(starting);
    starting.needs(replay);
}

void record(const RecordOptions& options, const Environment& environment) {
    if (options.replay) return replayFile(*options.replay, options, environment);
    recordLive(options, environment);
}

}  // namespace tappora

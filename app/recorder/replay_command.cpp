#include <fmt/format.h>

#include <cstdio>
#include <exception>
#include <string>
#include <utility>

#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/common/system/moment.h"
#include "app/recorder/counting_clock.h"
#include "app/recorder/record_command.h"
#include "app/recorder/recording_file.h"
#include "app/recorder/replay.h"
#include "core/counting/counter.h"

namespace tappora {
namespace {

using Wait = FolderWriter::Wait;

void printLine(const std::string& line) { print(line + '\n'); }

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

}  // namespace

void replayFile(const RecordOptions& options, const Environment& environment) {
    const std::string& file = *options.replay;
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

}  // namespace tappora

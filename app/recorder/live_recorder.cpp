#include "app/recorder/live_recorder.h"

#include <fmt/format.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <exception>
#include <utility>

#include "app/common/program.h"
#include "core/foundation/integers.h"

namespace tappora {
namespace {

/// How long to wait before another program's lock is tried again.
constexpr std::chrono::milliseconds aMoment{100};

}  // namespace

void LiveRecorder::run(EventSource& source) {
    const SignalQueue signals({SIGINT, SIGTERM, SIGHUP, SIGPIPE, SIGUSR1});
    DeviceReader reader(source, std::move(options_), pauses_, bool(world_.watch), world_.now,
                        world_.calendar());
    note(reader.findDevices());
    status_.since = now_;
    reader.requireKeyboard();
    HandOver handOver;
    std::jthread reading([&](const std::stop_token& stop) { reader.read(signals, stop, handOver); });
    makeReady(handOver);
    try {
        storeAllThatComes(handOver, reading);
    } catch (...) {
        reading.request_stop();
        keepAllThatComes(handOver);
        finish();
        throw;
    }
    finish();
}

/// What was pressed before a signal ended the wait is lost, and said.
void LiveRecorder::makeReady(HandOver& handOver) {
    bool hasEnded = false;
    try {
        world_.ready([&] { return hasEnded = handOver.endsWithin(aMoment); });
    } catch (const std::exception& error) {
        if (hasEnded) keepAllThatComes(handOver);
        if (book_.days().empty()) throw;
        throw Failure(error.what(), "not stored: " + unstored());
    }
}

void LiveRecorder::storeAllThatComes(HandOver& handOver, std::jthread& reading) {
    while (true) {
        if (world_.serve) world_.serve(handOver.descriptor());
        auto harvest = handOver.take();
        if (!harvest) return;
        if (take(std::move(*harvest), handOver) == Next::stop) reading.request_stop();
    }
}

/// Takes the counts that are handed over until reading has ended.
void LiveRecorder::keepAllThatComes(HandOver& handOver) {
    try {
        while (const auto harvest = handOver.take()) book_.add(harvest->counts);
    } catch (...) {  // what ended the reading; it or another failure is being told
    }
}

LiveRecorder::Next LiveRecorder::take(Harvest&& harvest, HandOver& handOver) {
    book_.add(harvest.counts);
    note(harvest);
    if (world_.followPause) world_.followPause();
    const bool hasReader = !world_.watch || world_.watch(harvest.watched);
    if (harvest.hasEndedMinute) {
        world_.eachMinute();
        handOver.changeCalendar(world_.calendar());
        store();
    }
    return hasReader ? Next::goOn : Next::stop;
}

void LiveRecorder::note(const Harvest& harvest) {
    now_ = harvest.at;
    if (harvest.devices) status_.devices = *harvest.devices;
    for (const std::string& text : harvest.told.kept) world_.tell(text);
    if (harvest.drops == 0) return;
    const std::int64_t before = status_.dropped ? status_.dropped->times : 0;
    status_.dropped = {.times = before + harvest.drops, .last = now_};
    const std::string times = harvest.drops == 1 ? "" : fmt::format(" ({} times)", harvest.drops);
    world_.tell("some presses were not seen: the machine was too busy" + times);
}

void LiveRecorder::store() {
    try {
        storeBy(world_.tryWrite);
        world_.allStored();
        if (std::exchange(status_.unstored, std::nullopt)) world_.tell("stored again, with what was kept");
    } catch (const std::exception& error) {
        const bool isNew = !status_.unstored;
        status_.unstored = {.why = error.what()};
        if (isNew)
            world_.tell(std::string("cannot store: ") + error.what() +
                        "; the counts are kept, and storing them is tried again");
    }
}

void LiveRecorder::storeBy(const DayBook::Write& write) {
    if (book_.days().empty()) return;
    RecorderStatus::Stored stored{.at = now_};
    const auto writeAndNote = [&](const tapcore::Day& day, const DayCounts& counts) {
        write(day, counts);
        stored.presses += counts.tally.total();
        stored.clicks += counts.tally.mouseTotal().allClicks();
        status_.stored = stored;
    };
    book_.store(writeAndNote);
    world_.stored();
}

RecorderStatus LiveRecorder::status() const {
    RecorderStatus status = status_;
    status.process = ::getpid();
    if (status.unstored) status.unstored->what = unstored();
    const PauseSwitch::State state = pauses_.state();
    status.pause = state.pause;
    status.isLocked = state.isLocked;
    status.lockProblem = state.lockProblem;
    return status;
}

void LiveRecorder::finish() {
    try {
        storeBy(world_.write);
    } catch (const std::exception& error) {
        throw Failure(error.what(), "not stored: " + unstored());
    }
}

/// "120 presses, 7 clicks of 2026-09-20; …".
std::string LiveRecorder::unstored() const {
    std::string list;
    for (const auto& [day, counts] : book_.days())
        list +=
            fmt::format("{}{}, {} of {}", list.empty() ? "" : "; ",
                        tapcore::counted(static_cast<std::size_t>(counts.tally.total()), "press", "presses"),
                        tapcore::counted(static_cast<std::size_t>(counts.tally.mouseTotal().allClicks()),
                                         "click", "clicks"),
                        day.description());
    return list;
}

}  // namespace tappora

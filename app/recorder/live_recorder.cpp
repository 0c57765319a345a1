#include "app/recorder/live_recorder.h"

#include <fmt/format.h>

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
    DeviceReader reader(source, std::move(options_), bool(world_.watch), world_.now, world_.calendar());
    tell(reader.findDevices());
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
    while (auto harvest = handOver.take())
        if (take(std::move(*harvest), handOver) == Next::stop) reading.request_stop();
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
    tell(harvest);
    const bool hasReader = !world_.watch || world_.watch(harvest.watched);
    if (harvest.hasEndedMinute) {
        world_.eachMinute();
        handOver.changeCalendar(world_.calendar());
        store();
    }
    return hasReader ? Next::goOn : Next::stop;
}

void LiveRecorder::tell(const Harvest& harvest) const {
    for (const std::string& text : harvest.told.kept) world_.tell(text);
    if (harvest.drops == 0) return;
    const std::string times = harvest.drops == 1 ? "" : fmt::format(" ({} times)", harvest.drops);
    world_.tell("some presses were not seen: the machine was too busy" + times);
}

void LiveRecorder::store() {
    try {
        storeBy(world_.tryWrite);
        if (std::exchange(isFailing_, false)) world_.tell("stored again, with what was kept");
    } catch (const std::exception& error) {
        if (!std::exchange(isFailing_, true))
            world_.tell(std::string("cannot store: ") + error.what() +
                        "; the counts are kept, and storing them is tried again");
    }
}

void LiveRecorder::storeBy(const DayBook::Write& write) {
    if (book_.days().empty()) return;
    book_.store(write);
    world_.stored();
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

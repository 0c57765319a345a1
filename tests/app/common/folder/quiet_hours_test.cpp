#include "app/common/folder/quiet_hours.h"

#include <gtest/gtest.h>

#include <string>

#include "core/files/file_copies.h"
#include "core/foundation/file_io.h"
#include "tests/support/temporary_folder.h"

namespace tappora {
namespace {

using tapcore::Day;
using tapcore::DayFile;
using tapcore::Store;

const Day day(2026, 9, 20);

/// A day at the keyboard. Presses are of one key, half of them with ctrl.
class Quiet : public testing::Test {
  protected:
    tapcore::TemporaryFolder disk;
    Store bare{disk / "data", tapcore::FileFormat::org};
    Store store = bare.waitingIn(disk / "waiting");
    QuietRules rules;

    void at(std::int64_t hour) { rules.underWay = tapcore::WaitingHour{day, hour}; }
    void press(std::int64_t count, std::int64_t hour) { store_(pressed(count, hour)); }
    void store_(const DayFile& counts) { QuietHours(store, rules).add(day, counts); }
    void takeIn() { QuietHours(store, rules).takeIn(); }
    static DayFile pressed(std::int64_t count, std::int64_t hour) {
        DayFile counts;
        counts.tally.add(tapcore::KeyCode{0}, hour, count);
        counts.tally.add(tapcore::Tally::Chord{tapcore::Modifiers::control, 0}, hour, count / 2);
        counts.tally.add(tapcore::Tally::MouseHour{.clicks = 1}, hour);
        return counts;
    }

    /// "9: 4 keys, 2 chords, 0 others; ", of each hour that has presses.
    static std::string of(const DayFile& file) {
        std::string text;
        for (std::size_t hour = 0; hour < 24; ++hour) {
            const auto& tally = file.tally;
            const auto presses = tally.byHour()[hour];
            if (presses == 0) continue;
            const auto chords = tally.chords[hour].empty() ? 0 : tally.chords[hour].begin()->second;
            text += std::to_string(hour) + ": " + std::to_string(presses - tally.unkeyed[hour]) + " keys, " +
                    std::to_string(chords) + " chords, " + std::to_string(tally.unkeyed[hour]) + " others; ";
        }
        return text;
    }
    std::string inFolder() const { return of(bare.read(day)); }
    std::string counted() const { return of(store.read(day)); }
};

TEST_F(Quiet, WritesAtOnceWhereNothingIsAskedFor) {
    at(9);
    press(4, 9);
    EXPECT_EQ(inFolder(), "9: 4 keys, 2 chords, 0 others; ");
}

TEST_F(Quiet, KeepsAnHourOutUntilItReachesTheFloor) {
    rules.floor = 10;
    at(9);
    press(4, 9);
    EXPECT_EQ(inFolder(), "");
    EXPECT_EQ(counted(), "9: 4 keys, 2 chords, 0 others; ");
    press(6, 9);
    EXPECT_EQ(inFolder(), "9: 10 keys, 5 chords, 0 others; ");
    press(2, 9);
    EXPECT_EQ(inFolder(), "9: 12 keys, 6 chords, 0 others; ");
}

TEST_F(Quiet, ForgetsTheKeysOfAnHourThatEndsBelowTheFloor) {
    rules.floor = 10;
    at(9);
    press(4, 9);
    takeIn();
    EXPECT_EQ(inFolder(), "");
    at(10);
    takeIn();
    EXPECT_EQ(inFolder(), "9: 0 keys, 0 chords, 4 others; ");
    EXPECT_EQ(bare.read(day).tally.mouse[9].clicks, 1);
    EXPECT_EQ(counted(), inFolder());
}

TEST_F(Quiet, WritesAnHourOnceWhenItIsOver) {
    rules.hourly = true;
    at(9);
    press(20, 9);
    press(20, 9);
    takeIn();
    EXPECT_EQ(inFolder(), "");
    at(10);
    press(2, 9);  // the last minute, which ends with the hour
    EXPECT_EQ(inFolder(), "9: 42 keys, 21 chords, 0 others; ");
    press(5, 10);
    EXPECT_EQ(counted(), inFolder() + "10: 5 keys, 2 chords, 0 others; ");
}

TEST_F(Quiet, JudgesTheWholeHourWhereverItIs) {
    at(9);
    press(3, 9);
    rules = {.floor = 10, .hourly = true};
    at(9);
    press(4, 9);
    at(10);
    takeIn();
    EXPECT_EQ(inFolder(), "9: 0 keys, 0 chords, 7 others; ");
    QuietHours(store, rules.afterwards()).add(day, pressed(4, 9));  // a recording of the same hour
    EXPECT_EQ(inFolder(), "9: 4 keys, 2 chords, 7 others; ");
}

TEST_F(Quiet, TakesWhatWaitedInWhenTheSettingsChange) {
    rules = {.floor = 100, .hourly = true};
    at(9);
    press(20, 9);
    rules.hourly = false;
    takeIn();
    EXPECT_EQ(inFolder(), "");
    rules.floor = 20;
    takeIn();
    EXPECT_EQ(inFolder(), "9: 20 keys, 10 chords, 0 others; ");
}

TEST_F(Quiet, KeepsHoursTogetherThatCouldNotBeStoredInTime) {
    rules = {.floor = 10, .hourly = true};
    at(9);
    DayFile counts = pressed(4, 8);
    counts.tally.merge(pressed(20, 9).tally);
    store_(counts);
    EXPECT_EQ(inFolder(), "");
    at(10);
    takeIn();
    EXPECT_EQ(inFolder(), "8: 0 keys, 0 chords, 4 others; 9: 20 keys, 10 chords, 0 others; ");
}

TEST_F(Quiet, ForgetsAndClearsWhatWaits) {
    rules.hourly = true;
    at(9);
    press(20, 9);
    store.resetHeatmap();
    EXPECT_EQ(counted(), "9: 0 keys, 10 chords, 20 others; ");
    const auto clear = {+[](const Store& all) { all.clearDay(day); },
                        +[](const Store& all) { all.clearCounts(); }};
    for (const auto& by : clear) {
        press(20, 9);
        by(store);
        EXPECT_EQ(counted(), "");
        at(10);
        takeIn();
        EXPECT_EQ(inFolder(), "");
        at(9);
    }
}

/// A crash when the day was written, and the hour's file was not removed yet.
TEST_F(Quiet, CountsAnHourOnceThatWasCutOffOnItsWay) {
    rules.hourly = true;
    at(9);
    press(20, 9);
    const auto waiting = tapcore::readFile(store.url(tapcore::WaitingHour{day, 9})).text;
    const auto days = disk / "data/days";
    (void)tapcore::writeFile(days / ".2026-09-20.merged", "");
    at(10);
    takeIn();
    const auto merged = tapcore::readFile(days / "2026-09-20.org").text;
    const auto note = tapcore::mergingNote(
        days / "2026-09-20.org", merged,
        {{store.url(tapcore::WaitingHour{day, 9}), {tapcore::FileRead::Status::read, waiting, {}}, false}});
    const auto cutOff = [&] {
        (void)tapcore::writeFile(days / ".2026-09-20.merging", note);
        (void)tapcore::writeFile(store.url(tapcore::WaitingHour{day, 9}), waiting);
    };
    cutOff();
    EXPECT_EQ(counted(), "9: 20 keys, 10 chords, 0 others; ");
    EXPECT_TRUE(store.convert());
    EXPECT_EQ(counted(), "9: 20 keys, 10 chords, 0 others; ");
    cutOff();
    at(9);
    press(2, 9);
    EXPECT_EQ(counted(), "9: 22 keys, 11 chords, 0 others; ");
}

}  // namespace
}  // namespace tappora

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/recorder/key_codes.h"
#include "app/recorder/record_command.h"
#include "core/files/store.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;
using tapcore::Day;
using tapcore::Tally;

const fs::path recordings = RECORDINGS;

/// What evening.evemu holds when it starts at 22:59:20 on the 20th: counted line by line, by other means than
/// the recorder's.
struct CountedByHand {
    struct Line {
        long time;
        unsigned type, code;
        int value;
    };

    std::map<Day, Tally> days;
    std::map<Day, std::int64_t> peaks;

    explicit CountedByHand(const fs::path& evemu) {
        std::vector<Line> lines;
        std::ifstream file(evemu);
        for (std::string text; std::getline(file, text);) {
            long seconds = 0, micros = 0;
            Line line{};
            if (std::sscanf(text.c_str(), "E: %ld.%ld %x %x %d", &seconds, &micros, &line.type, &line.code,
                            &line.value) != 5)
                continue;
            line.time = seconds * 1'000'000 + micros;
            lines.push_back(line);
        }
        const auto earlier = [](const Line& a, const Line& b) { return a.time < b.time; };
        std::stable_sort(lines.begin(), lines.end(), earlier);
        for (const Line& line : lines)
            count(line, (line.time - lines[0].time) / 1'000'000 + (22 * 60 + 59) * 60 + 20);
    }

  private:
    void count(const Line& line, long second) {
        const Day day(2026, 9, 20 + second / 86400);
        const std::int64_t hour = second / 3600 % 24;
        Tally& tally = days[day];
        if (line.type == EV_KEY && line.code >= BTN_LEFT && line.value == 1)
            tally.add(
                Tally::MouseHour{line.code == BTN_LEFT, line.code == BTN_RIGHT, line.code > BTN_RIGHT, 0, 0},
                hour);
        else if (line.type == EV_KEY) countKey(line, tally, hour, peaks[day], second / 60);
        else if (line.type == EV_REL) frame[line.code] += line.value;
        else if (line.type == EV_SYN) countFrame(tally, hour);
    }

    void countKey(const Line& line, Tally& tally, std::int64_t hour, std::int64_t& peak, long minute) {
        const auto mac = macKeyCode(static_cast<LinuxKey>(line.code), BoardShape::ansi);
        if (line.value == 1 && mac) {
            const auto down = [&](unsigned left, unsigned right, unsigned bit) {
                return held.contains(left) || held.contains(right) ? bit : 0U;
            };
            const unsigned bits = down(29, 97, 1) | down(56, 100, 2) | down(42, 54, 4) | down(125, 126, 8);
            tally.add(*mac, hour, 1);
            if (!std::set<unsigned>{29, 97, 56, 100, 42, 54, 125, 126, 58}.contains(line.code))
                tally.add(Tally::Chord{tapcore::Modifiers(static_cast<std::uint8_t>(bits)), *mac}, hour, 1);
            peak = std::max(peak, ++minutes[minute]);
        }
        if (line.value == 0) held.erase(line.code);
        else held.insert(line.code);
    }

    void countFrame(Tally& tally, std::int64_t hour) {
        const double way = std::hypot(frame[REL_X], frame[REL_Y]);
        if (way < 4000) moved[&tally][hour] += way;
        tally.mouse[static_cast<std::size_t>(hour)].moved = std::lround(moved[&tally][hour]);
        const int parts = frame[REL_WHEEL_HI_RES] != 0 ? frame[REL_WHEEL_HI_RES] : frame[REL_WHEEL] * 120;
        turned = (turned < 0) == (parts < 0) ? turned + parts : parts != 0 ? parts : turned;
        tally.add(Tally::MouseHour{0, 0, 0, std::abs(turned / 120) + std::abs(frame[REL_HWHEEL]), 0}, hour);
        turned %= 120;
        frame.clear();
    }

    std::set<unsigned> held;
    std::map<long, std::int64_t> minutes;
    std::map<unsigned, int> frame;
    std::map<const Tally*, std::map<std::int64_t, double>> moved;
    int turned = 0;
};

class Replay : public testing::Test {
  protected:
    fs::path folder = fs::path(testing::TempDir()) / ("replay-" + std::to_string(::getpid()));
    Replay() { fs::create_directories(folder); }
    ~Replay() override { fs::remove_all(folder); }

    Environment environment() const {
        return {.variable = [run = folder / "run"](const std::string&) { return run.string(); },
                .now = {},
                .calendar = tapcore::Calendar("UTC")};
    }

    void play(const std::string& file, const std::string& format = "org") const {
        RecordOptions options;
        options.folder.folder = (folder / "data").string();
        fs::create_directories(folder / "data");
        options.format = format;
        options.replay = (recordings / file).string();
        options.starting = "2026-09-20T22:59:20";
        record(options, environment());
    }
};

TEST_F(Replay, WritesEveryCountOfAnEveningWhateverTheForms) {
    const CountedByHand expected(recordings / "evening.evemu");
    for (const std::string format : {"org", "markdown"}) {
        for (const char* file :
             {"evening.evemu", "evening.yml", "evening-flat.yml", "evening-documents.yml"}) {
            play(file, format);
            const tapcore::Store store(folder / "data", *tapcore::FileFormat::parse(format));
            ASSERT_EQ(store.days().size(), 2U) << file;
            for (const auto& [day, tally] : expected.days) {
                EXPECT_TRUE(fs::exists(store.url(day))) << file << format;
                EXPECT_EQ(store.read(day).tally, tally) << file << format << day.description();
                EXPECT_EQ(store.read(day).peakPerMinute, expected.peaks.at(day)) << file;
            }
            fs::remove_all(folder / "data");
        }
    }
}

TEST_F(Replay, CountsMaskedKeysWithoutNamingThem) {
    testing::internal::CaptureStderr();
    play(TEST_DATA "/recordings/masked.yml");
    EXPECT_NE(testing::internal::GetCapturedStderr().find("masked.yml: keys are not known"),
              std::string::npos);
    const Tally tally =
        tapcore::Store(folder / "data", tapcore::FileFormat::org).read(Day(2026, 9, 20)).tally;
    EXPECT_EQ(tally.total(), 4);
    EXPECT_EQ(tally.byKey(), (Tally::KeyCounts{{59, 1}})) << "the control key alone is known";
    EXPECT_EQ(tally.mouseTotal(), (Tally::MouseHour{1, 0, 0, 1, 6}));
}

TEST_F(Replay, PlaysTheDemo) {
    play(RESOURCES "/Demo/typing.evemu");
    const Tally tally =
        tapcore::Store(folder / "data", tapcore::FileFormat::org).read(Day(2026, 9, 21)).tally;
    EXPECT_GT(tally.total(), 500);
    EXPECT_GT(tally.activeHours(), 3);
}

TEST_F(Replay, WritesNothingOfADamagedRecording) {
    std::ifstream whole(recordings / "evening.evemu", std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(whole), {}};
    std::ofstream(folder / "cut.evemu") << text.substr(0, text.rfind(" 0000 0000"));
    EXPECT_THROW(play((folder / "cut.evemu").string()), Failure);
    EXPECT_TRUE(fs::is_empty(folder / "data"));
}

}  // namespace
}  // namespace tappora

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/recorder/record_command.h"
#include "core/files/store.h"
#include "core/foundation/file_io.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;
using tapcore::Day;
using tapcore::Tally;

const fs::path recordings = RECORDINGS;

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

// The files that are expected were compared with the lines of evening.evemu, counted by other means.
TEST_F(Replay, WritesEveryCountOfAnEveningWhateverTheForms) {
    for (const std::string format : {"org", "markdown"}) {
        for (const char* file :
             {"evening.evemu", "evening.yml", "evening-flat.yml", "evening-documents.yml"}) {
            play(file, format);
            const tapcore::Store store(folder / "data", *tapcore::FileFormat::parse(format));
            ASSERT_EQ(store.days(), (std::vector{Day(2026, 9, 20), Day(2026, 9, 21)})) << file;
            for (const Day& day : store.days()) {
                EXPECT_TRUE(fs::exists(store.url(day))) << file << format;
                const auto expected =
                    tapcore::readFile(TEST_DATA "/recordings/evening/" + day.description() + ".org");
                EXPECT_EQ(store.read(day).text(tapcore::FileFormat::org, day), expected.text)
                    << file << format;
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

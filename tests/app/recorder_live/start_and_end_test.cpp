#include <optional>

#include "core/foundation/file_io.h"
#include "core/foundation/file_lock.h"
#include "tests/app/recorder_live/live.h"

namespace tappora {
namespace {

TEST_F(Live, SaysThatItWaitsForAnotherProgramToStartAndEndsMeanwhile) {
    bed.plug(keyboard);
    fs::create_directories(share / "tappora");  // of the settings, which note the id of this machine
    for (const fs::path& busy : {share / "tappora", folder}) {
        const std::string isBusy = "tappora: " + busy.string() + ": another program is writing in it";
        std::optional other = tapcore::FileLock::acquireFolder(busy);
        std::vector<std::string> arguments = watching();
        if (busy != folder) arguments.push_back("--shared");
        Program ended(arguments);
        ASSERT_TRUE(ended.prints(isBusy + "; waiting until it is done\n")) << ended.printed;
        EXPECT_EQ(ended.stop(), 1);
        EXPECT_TRUE(ended.prints(isBusy + "\n"));
        EXPECT_TRUE(fs::is_empty(folder));
        if (busy != folder) continue;
        Program waiting(arguments);
        ASSERT_TRUE(waiting.prints(isBusy + "; waiting until it is done\n"));
        other.reset();
        EXPECT_TRUE(waiting.prints("counts go to"));
        EXPECT_EQ(waiting.stop(), 0);
    }
}

TEST_F(Live, RefusesToStartWithoutAKeyboardOrBesideAnother) {
    bed.plug(mouse);
    bed.plug(keyboard);
    bed.removeFile(keyboard);
    Program blind({"--watch", "--shared", "--folder", folder.string()});
    EXPECT_TRUE(blind.prints("listening to A mouse"));
    EXPECT_TRUE(blind.prints("A keyboard (/dev/input/event5): cannot be read: No such file or directory\n"));
    EXPECT_TRUE(blind.prints("tappora: input devices: there is no keyboard that can be read\n"));
    EXPECT_EQ(blind.end(), 1);
    EXPECT_TRUE(fs::is_empty(folder));
    EXPECT_FALSE(fs::exists(share));

    bed.plug({.number = 7, .name = "Keyboard 7"});
    Program first(watching());
    ASSERT_TRUE(first.prints("listening to Keyboard 7"));
    ::setenv("XDG_RUNTIME_DIR", "/tmp", 1);  // in another session
    Program second(watching());
    EXPECT_TRUE(second.prints("tappora: " + folder.string() + ": another recorder is counting into it\n"));
    EXPECT_EQ(second.end(), 1);
    EXPECT_EQ(first.stop(), 0);
}

TEST_F(Live, GoesOnWhereDaysCannotBeAddedUp) {
    fs::create_directories(folder / "days");
    for (const std::string day : {"2026-09-20", "2026-09-21"})
        (void)tapcore::writeFile(folder / "days" / (day + ".org"),
                                 "* Keys\n| 9 | 0 | 9223372036854775000 |\n");
    fs::create_directories(share / "tappora");
    (void)tapcore::writeFile(share / "tappora/settings.json", R"({"reports.save": "week"})");
    bed.plug(keyboard);
    Program recorder({"--watch", "--folder", folder.string(), "--today", "2026-09-28"});
    ASSERT_TRUE(recorder.prints("listening to A keyboard")) << recorder.printed;
    EXPECT_TRUE(recorder.prints("a report is not saved: " + folder.string() + ": counts too large"));
    bed.tap(keyboard, KEY_A);
    ASSERT_TRUE(recorder.prints("key — counted\n"));
    EXPECT_EQ(recorder.stop(), 0);
    EXPECT_TRUE(recorder.prints("months/2026-09.org: counts too large to be added up\n"));
    EXPECT_TRUE(recorder.prints("the widgets stay as they are: " + folder.string() +
                                ": counts too large to be added up\n"));
    EXPECT_EQ(tapcore::Store(folder, tapcore::FileFormat::org).days().size(), 3U);
}

}  // namespace
}  // namespace tappora

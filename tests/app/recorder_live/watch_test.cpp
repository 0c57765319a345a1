#include "tests/app/recorder_live/live.h"

namespace tappora {
namespace {

TEST_F(Live, WaitsForNobodyWhoReadsItsWatch) {
    const MockDevice tool{.number = 8, .name = "tool " + std::string(200, 'x'), .isVirtual = true};
    bed.plug(keyboard);
    bed.plug(tool);
    const Pipe watch(4096);
    Program recorder(watching(), watch.writer());
    ASSERT_TRUE(recorder.prints("listening to A keyboard")) << recorder.printed;
    ASSERT_TRUE(recorder.prints("listening to tool")) << recorder.printed;
    const auto fill = [&] {
        do bed.tap(tool, KEY_A);
        while (watch.takesMore(recorder));
        bed.tap(tool, KEY_A);
        return recorder.prints("tappora: nobody reads the lines of --watch: they are dropped\n");
    };
    ASSERT_TRUE(fill()) << recorder.printed;
    watch.empty();
    bed.tap(keyboard, KEY_A);
    EXPECT_TRUE(recorder.prints("of --watch dropped\n")) << recorder.printed;
    ASSERT_TRUE(fill()) << recorder.printed;
    EXPECT_EQ(recorder.stop(), 0);
    EXPECT_EQ(counted().total(), 1);
}

TEST_F(Live, SaysWhyItsWatchCannotBeWritten) {
    bed.plug(keyboard);
    const tapcore::Descriptor full(::open("/dev/full", O_WRONLY | O_CLOEXEC));
    Program recorder(watching(), full.get());
    ASSERT_TRUE(recorder.prints("counts go to")) << recorder.printed;
    bed.tap(keyboard, KEY_A);
    EXPECT_TRUE(
        recorder.prints("standard output: No space left on device; the lines of --watch are dropped\n"));
    EXPECT_EQ(recorder.stop(), 0);
    EXPECT_EQ(counted().total(), 1);
}

TEST_F(Live, EndsWithItsReaderAndStoresWhatItCounted) {
    bed.plug(keyboard);
    Program recorder(watching());
    ASSERT_TRUE(recorder.prints("listening to A keyboard")) << recorder.printed;
    recorder.stopReading();
    bed.tap(keyboard, KEY_A);
    EXPECT_EQ(recorder.end(), 0);
    EXPECT_EQ(counted().total(), 1);
}

}  // namespace
}  // namespace tappora

#include "app/tappora/descriptor_lines.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <future>
#include <thread>

namespace tappora {
namespace {

TEST(LineWriter, LosesNothingBetweenEndsThatDoNotWait) {
    int ends[2];
    ASSERT_EQ(::pipe2(ends, O_NONBLOCK), 0);
    const std::string longLine(1 << 20, 'x');
    std::promise<void> isShortRead;
    std::thread writer([&] {
        EXPECT_TRUE(writeLine(ends[1], longLine));
        EXPECT_TRUE(writeLine(ends[1], "short"));
        isShortRead.get_future().wait();  // now the reader has nothing and waits
        EXPECT_TRUE(writeLine(ends[1], "last"));
        ::close(ends[1]);
    });
    LineReader reader(ends[0], longLine.size());
    for (const std::string& text : {longLine, std::string("short"), std::string("last")}) {
        const auto line = reader.next(true);
        ASSERT_TRUE(line);
        EXPECT_EQ(line->text, text);
        if (text == "short") isShortRead.set_value();
    }
    EXPECT_FALSE(reader.next(true));
    writer.join();
    ::close(ends[0]);
}

}  // namespace
}  // namespace tappora

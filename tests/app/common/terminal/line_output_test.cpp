#include "app/common/terminal/line_output.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <stdexcept>
#include <string>

namespace tappora {
namespace {

struct Ends {
    int reader = -1;
    int writer = -1;
};

Ends pipeEnds() {
    int ends[2];
    return ::pipe(ends) == 0 ? Ends{ends[0], ends[1]} : Ends{};
}
Ends socketEnds() {
    int ends[2];
    return ::socketpair(AF_UNIX, SOCK_STREAM, 0, ends) == 0 ? Ends{ends[0], ends[1]} : Ends{};
}
Ends terminalEnds() {
    Ends ends;
    termios raw{};
    ::cfmakeraw(&raw);
    ::openpty(&ends.reader, &ends.writer, nullptr, &raw, nullptr);
    return ends;
}

/// What can be read now, or within half a minute.
std::string readSome(int file) {
    std::string bytes(4096, '\0');
    pollfd waiting{.fd = file, .events = POLLIN, .revents = 0};
    if (::poll(&waiting, 1, 30'000) <= 0) throw std::runtime_error("nothing comes");
    bytes.resize(static_cast<std::size_t>(::read(file, bytes.data(), bytes.size())));
    return bytes;
}

TEST(LineOutput, WaitsForNoReaderAndCutsNoLine) {
    for (const auto& open : {pipeEnds, socketEnds, terminalEnds}) {
        const Ends ends = open();
        LineOutput output(ends.writer);
        std::int64_t lines = 0;
        for (; !output.isStalled() && lines < 10'000'000; ++lines) output.write("a line");
        std::string text;
        for (; !text.ends_with("the last\n"); ++lines) {
            output.write("the last");
            text += readSome(ends.reader);
        }
        const std::int64_t dropped = output.takeDropped();
        EXPECT_GT(dropped, 0);
        // More of the last ones may be on their way: a terminal hands on what it took when it has time.
        while (std::count(text.begin(), text.end(), '\n') + dropped < lines) {
            output.goOn();
            text += readSome(ends.reader);
        }
        std::int64_t whole = 0;
        for (std::size_t at = 0; at < text.size(); ++whole) {
            const std::string line = text.substr(at, text.find('\n', at) - at);
            ASSERT_TRUE(line == "a line" || line == "the last") << line;
            at += line.size() + 1;
        }
        EXPECT_EQ(whole + dropped, lines);
        ::close(ends.writer);
        ::close(ends.reader);
    }
}

TEST(LineOutput, FinishesALineOnceItIsTakenAndDropsItWhenItNeverIs) {
    const Ends ends = pipeEnds();
    LineOutput output(ends.writer);
    const std::string line(100'000, 'x');  // more than a pipe takes
    for (const bool isRead : {true, false}) {
        output.write(line);
        EXPECT_TRUE(output.isStalled());
        std::string text;
        for (; isRead && !text.ends_with('\n'); output.goOn()) text += readSome(ends.reader);
        EXPECT_TRUE(!isRead || text == line + '\n');
        EXPECT_EQ(output.isStalled(), !isRead);
        output.end();
        EXPECT_EQ(output.takeDropped(), isRead ? 0 : 1);
    }
    ::close(ends.reader);
    EXPECT_FALSE(output.isGone());
    ::signal(SIGPIPE, SIG_IGN);
    output.write("x");
    EXPECT_TRUE(output.isGone());
    ::close(ends.writer);
}

}  // namespace
}  // namespace tappora

#include "app/common/system/signals.h"

#include <gtest/gtest.h>

#include <csignal>

namespace tappora {
namespace {

using Blocked = Interruption::Blocked;

TEST(Interruption, NotesASignalAndLeavesAloneOneThatWasIgnored) {
    const auto atFirst = std::signal(SIGTERM, SIG_IGN);
    std::signal(SIGINT, SIG_IGN);
    {
        const Interruption interruption(Blocked::goesOn);
        std::raise(SIGINT);
        EXPECT_FALSE(Interruption::isRequested()) << "started in the background, where Ctrl-C is not meant";
        std::signal(SIGINT, SIG_DFL);
    }
    EXPECT_EQ(std::signal(SIGINT, SIG_DFL), SIG_IGN) << "put back";
    {
        const Interruption interruption(Blocked::ends);
        EXPECT_FALSE(Interruption::isRequested());
        std::raise(SIGINT);
        EXPECT_TRUE(Interruption::isRequested());
    }
    EXPECT_EQ(std::signal(SIGINT, SIG_DFL), SIG_DFL);
    std::signal(SIGTERM, atFirst);
}

}  // namespace
}  // namespace tappora

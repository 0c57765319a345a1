#include "app/common/folder/tell.h"
#include "app/common/program.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace tappora {
namespace {

TEST(Attempt, TellsAFailureOnceUntilItIsAnotherOrAllWentWell) {
    std::vector<std::string> told;
    Attempt attempt([&](const std::string& text) { told.push_back(text); }, "not done: ");
    for (const std::string why : {"full", "full", "gone", "gone", "", "gone"})
        EXPECT_EQ(attempt.run([&] {
            if (!why.empty()) throw Failure("disk", why);
        }),
                  why.empty());
    EXPECT_THAT(told,
                testing::ElementsAre("not done: disk: full", "not done: disk: gone", "not done: disk: gone"));
}

}  // namespace
}  // namespace tappora

#include "app/common/practice_lock.h"

#include <gtest/gtest.h>

#include <optional>

#include "tests/support/temporary_folder.h"

namespace tappora {
namespace {

TEST(PracticeLock, IsHeldAsLongAsOneOfItsHoldersHoldsIt) {
    const tapcore::TemporaryFolder run;
    const Environment environment{
        .variable = [&](const std::string&) { return run.path().string(); }, .now = {}, .zone = "UTC"};
    EXPECT_FALSE(isPractising(environment));
    EXPECT_TRUE(run.files().empty()) << "who asks makes nothing";
    std::optional<PracticeLock> first(environment);
    PracticeLock second(environment);
    EXPECT_FALSE(isPractising(environment)) << "not held from the start";
    first->hold();
    second.hold();
    second.hold();
    second.release();
    EXPECT_TRUE(isPractising(environment));
    EXPECT_TRUE(isPractising(environment)) << "asking takes nothing";
    first.reset();
    EXPECT_FALSE(isPractising(environment));

    second.hold();
    std::filesystem::rename(run / "tappora", run / "others");
    std::filesystem::create_directory_symlink(run / "others", run / "tappora");
    EXPECT_FALSE(isPractising(environment)) << "what leads elsewhere is not the user's own";
    EXPECT_THROW(PracticeLock{environment}, Failure);
}

}  // namespace
}  // namespace tappora

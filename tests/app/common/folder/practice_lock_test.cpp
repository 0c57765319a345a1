#include "app/common/folder/practice_lock.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>

#include "tests/support/environment.h"
#include "tests/support/temporary_folder.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;

TEST(PracticeLock, IsHeldAsLongAsOneOfItsHoldersHoldsIt) {
    const tapcore::TemporaryFolder data;
    const Environment homeless = environmentWith({});
    const auto places = practiceFolders(homeless, data.path());
    EXPECT_FALSE(isPractising(places));
    std::optional<PracticeLock> first(std::in_place, homeless, data.path());
    PracticeLock second(homeless, data.path());
    EXPECT_FALSE(isPractising(places)) << "not held from the start";
    first->hold();
    second.hold();
    second.hold();
    second.release();
    EXPECT_TRUE(isPractising(places));
    EXPECT_TRUE(isPractising(places)) << "asking takes nothing";
    first.reset();
    EXPECT_FALSE(isPractising(places));
    EXPECT_TRUE(fs::is_empty(data.path()));
}

// A service that was started before its user logged in, or by another user, has another environment.
TEST(PracticeLock, IsFoundByTheDataFolderOrByTheUsersSettings) {
    const tapcore::TemporaryFolder base;
    const auto startedIn = [&](const char* home) { return environmentWith({{"HOME", base / home}}); };
    PracticeLock trainer(startedIn("user"), base / "data");
    trainer.hold();
    EXPECT_TRUE(isPractising(practiceFolders(startedIn("user"), base / "other")));
    EXPECT_FALSE(isPractising(practiceFolders(startedIn("root"), base / "data"))) << "is not there yet";
    PracticeWatch watch(practiceFolders(startedIn("root"), base / "data"));
    fs::create_directory(base / "data");
    trainer.hold();
    EXPECT_FALSE(watch.isPractising());
    watch.lookAgain();
    EXPECT_TRUE(watch.isPractising());
    EXPECT_TRUE(isPractising(practiceFolders(startedIn("root"), base / "data")));
    EXPECT_TRUE(isPractising(practiceFolders(environmentWith({}), base / "data")));
    EXPECT_FALSE(isPractising(practiceFolders(startedIn("root"), base / "other")));
    trainer.release();
    EXPECT_FALSE(watch.isPractising());
}

}  // namespace
}  // namespace tappora

#include "app/common/folder_lock.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

namespace tappora {
namespace {

namespace fs = std::filesystem;

TEST(FolderLock, IsOneForAllNamesOfAFolder) {
    const fs::path base = fs::path(testing::TempDir()) / ("folder-lock-" + std::to_string(::getpid()));
    fs::create_directories(base / "run");
    const Environment environment{
        .variable = [&](const std::string&) { return (base / "run").string(); }, .now = {}, .zone = "UTC"};
    const auto lock = [&](const fs::path& folder) {
        return lockFile(environment, folder, FolderLock::writing);
    };

    const fs::path beforeItExists = lock(base / "data");
    EXPECT_EQ(beforeItExists.parent_path(), base / "run/tappora");
    fs::create_directories(base / "data");
    fs::create_directory_symlink(base / "data", base / "link");
    for (const char* name : {"data", "data/", "./run/../data", "link", "link/"})
        EXPECT_EQ(lock(base / name), beforeItExists) << name;
    EXPECT_NE(lock(base / "other"), beforeItExists);
    EXPECT_NE(lockFile(environment, base / "data", FolderLock::recording), beforeItExists);
    EXPECT_TRUE(fs::is_empty(base / "data"));

    fs::remove_all(base / "run/tappora");
    fs::create_directory_symlink(base / "data", base / "run/tappora");
    EXPECT_THROW(lock(base / "data"), Failure);
    fs::remove_all(base);
}

}  // namespace
}  // namespace tappora

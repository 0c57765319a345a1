#include "app/common/folder/folder_watch.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>

namespace tappora {
namespace {

namespace fs = std::filesystem;

class FolderWatchTest : public testing::Test {
  protected:
    FolderWatchTest() { fs::create_directories(base_); }
    ~FolderWatchTest() override { fs::remove_all(base_); }

    void write(const std::string& name) const { std::ofstream(base_ / name) << "text"; }

    /// Whether anything woke the reader up at all.
    static bool wakes(const FolderWatch& watch) {
        pollfd waiting{watch.descriptor(), POLLIN, 0};
        return ::poll(&waiting, 1, 0) > 0;
    }

    fs::path base_ = fs::path(testing::TempDir()) / ("folder-watch-" + std::to_string(::getpid()));
};

TEST_F(FolderWatchTest, TellsWhatCountsFromWhatDoesNot) {
    fs::create_directories(base_ / "days");
    FolderWatch watch;
    watch.add(base_ / "days/");
    const std::vector<std::pair<std::function<void()>, bool>> cases = {
        {[&] { write("days/.tappora.tmp"); }, false},
        {[&] { fs::rename(base_ / "days/.tappora.tmp", base_ / "days/a.md"); }, true},
        {[&] { write("stranger"); }, false},
        {[&] { write("days/a.md"); }, true},
        {[&] { fs::create_directory(base_ / "days/2026"); }, true},
        {[&] { fs::remove(base_ / "days/a.md"); }, true},
        {[&] { fs::rename(base_ / "days", base_ / "gone"); }, true},
        {[&] { write("gone/a.md"); }, false},
    };
    for (std::size_t i = 0; i < cases.size(); ++i) {
        cases[i].first();
        EXPECT_EQ(watch.takeNote(), cases[i].second) << i;
    }
}

TEST_F(FolderWatchTest, WaitsForAMissingFolderAndThenSleepsThroughItsNeighbours) {
    FolderWatch watch;
    const fs::path folder = base_ / "share/Tappora";
    const auto comes = [&](const std::function<void()>& change, bool isChanged) {
        change();
        EXPECT_EQ(watch.takeNote(), isChanged);
        watch.add(folder);
    };
    watch.add(folder);
    comes([&] { write("stranger"); }, false);
    comes([&] { fs::create_directory(base_ / "share"); }, true);
    comes([&] { write("share/Tappora"); }, true);  // a file, for which there is nothing to be done
    comes([&] { fs::remove(base_ / "share/Tappora"); }, false);
    comes([&] { fs::create_directory(folder); }, true);
    watch.takeNote();
    write("stranger2");
    write("share/stranger");
    EXPECT_FALSE(wakes(watch));
    comes([&] { write("share/Tappora/widget.json"); }, true);
    comes([&] { fs::remove_all(base_ / "share"); }, true);
    comes([&] { fs::create_directories(folder); }, true);
    comes([&] { write("share/Tappora/widget.json"); }, true);
}

}  // namespace
}  // namespace tappora

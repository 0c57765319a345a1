#include "app/common/widget/widget_sums.h"

#include <gtest/gtest.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <set>

#include "app/common/program.h"
#include "tests/support/environment.h"
#include "tests/support/temporary_folder.h"

namespace tappora {
namespace {

/// The files that were read since it was asked last.
std::set<std::string> filesRead(int watch) {
    std::set<std::string> names;
    alignas(inotify_event) char buffer[4096];
    for (ssize_t size = 0, at = 0; (size = ::read(watch, buffer, sizeof buffer)) > 0; at = 0)
        while (at < size) {
            const auto& event = *reinterpret_cast<const inotify_event*>(buffer + at);
            if (event.len > 0) names.insert(event.name);
            at += static_cast<ssize_t>(sizeof event + event.len);
        }
    return names;
}

TEST(WidgetSums, ReadsADayAgainOnlyOnceItsFileHasChanged) {
    using Names = std::set<std::string>;
    const tapcore::TemporaryFolder data;
    const std::string many = "* Keys\n| 9 | 0 | 5000000000000000000 |\n";
    for (const char* day : {"2026-07-01", "2026-09-19", "2026-09-20"})
        data.put(std::string("days/") + day + ".org", many.substr(0, 25) + " |\n");
    const int watch = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    ::inotify_add_watch(watch, (data / "days").c_str(), IN_ACCESS);
    const FolderOptions options{.folder = data.path().string(), .today = {}};
    WidgetSums sums;
    sums.require(options, environmentWith({}));
    EXPECT_EQ(filesRead(watch), (Names{"2026-09-19.org", "2026-09-20.org"}));
    data.put("days/2026-09-20.org", many);
    sums.require(options, environmentWith({}));
    EXPECT_EQ(filesRead(watch), Names{"2026-09-20.org"});
    data.put("days/2026-09-18.md", many);
    for (int times = 0; times < 2; ++times)
        EXPECT_THROW(sums.require(options, environmentWith({})), Failure) << "also when nothing is read";
    EXPECT_EQ(filesRead(watch), Names{"2026-09-18.md"});
    ::close(watch);
}

}  // namespace
}  // namespace tappora

#include "app/common/folder/settings.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>

#include "app/common/system/environment.h"
#include "tests/support/environment.h"
#include "tests/support/temporary_folder.h"

namespace tappora {
namespace {

TEST(Settings, ChangesMadeByManyProcessesAtOnceAllStand) {
    constexpr int processes = 16;
    const tapcore::TemporaryFolder home;
    const Environment environment = environmentWith({{"XDG_CONFIG_HOME", home.path()}});
    const auto keyOf = [](int process) { return "practice.opened.en." + std::to_string(process); };
    for (int process = 0; process < processes; ++process) {
        if (::fork() != 0) continue;
        Settings::change(environment, [&](Settings& all) { all.setInteger(keyOf(process), process); });
        std::_Exit(0);
    }
    while (::wait(nullptr) > 0) {
    }
    const Settings settings = Settings::read(environment);
    for (int process = 0; process < processes; ++process)
        EXPECT_EQ(settings.integer(keyOf(process)), process) << keyOf(process);
}

}  // namespace
}  // namespace tappora

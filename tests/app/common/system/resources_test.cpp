#include "app/common/system/resources.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "tests/support/temporary_folder.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;

Environment environment(const fs::path& program, std::optional<std::string> named) {
    return {
        .variable =
            [named](const std::string& name) { return name == "TAPPORA_RESOURCES" ? named : std::nullopt; },
        .now = {},
        .calendar = tapcore::Calendar("UTC"),
        .program = program};
}

TEST(Resources, AreNamedOrBelongToTheInstallation) {
    const tapcore::TemporaryFolder folder;
    const fs::path program = folder / "bin/tappora";
    EXPECT_THROW(resourceFolder(environment(program, std::nullopt)), Failure);
    fs::create_directories(folder / "share/tappora");
    EXPECT_EQ(resourceFolder(environment(program, std::nullopt)), folder / "share/tappora");
    EXPECT_EQ(resourceFolder(environment(folder / "libexec/tappora/tappora-paint", std::nullopt)),
              folder / "share/tappora");
    EXPECT_EQ(resourceFolder(environment(program, folder.path().string())), folder.path());
    EXPECT_THROW(resourceFolder(environment(program, folder / "missing")), Failure);
}

}  // namespace
}  // namespace tappora

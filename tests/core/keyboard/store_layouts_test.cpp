#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/files/store.h"
#include "core/keyboard/layout.h"
#include "tests/support/temporary_folder.h"

namespace tapcore {
namespace {

using testing::ElementsAre;

const Layout mine{.id = "my-layout_2", .name = "Mine", .base = "qwerty", .legends = {{12, {"ж", "Ж"}}}};

TEST(OwnLayouts, OfAllMachinesAreReadAndTheOwnOneStands) {
    const TemporaryFolder folder;
    const auto saved = [&](const std::string& mac, const std::string& id, const std::string& name) {
        const Store store(folder.path(), FileFormat::org, mac);
        folder.put(mac + "/.keys-mac", "{}");
        store.saveOwnLayout({.id = id, .name = name});
        return store;
    };
    saved("Attic", "a", "of the attic");
    const Store own = saved("Studio", "a", "of the studio");
    saved("Travel", "b", "of the travels");
    Store(folder.path(), FileFormat::org).saveOwnLayout({.id = "c", .name = "from before"});
    EXPECT_THAT(own.ownLayouts(), ElementsAre(Layout{.id = "a", .name = "of the studio"},
                                              Layout{.id = "b", .name = "of the travels"},
                                              Layout{.id = "c", .name = "from before"}));
}

TEST(OwnLayouts, LeaveOutAndNameFilesThatCannotBeUsed) {
    const TemporaryFolder folder;
    const Store store(folder.path(), FileFormat::org);
    EXPECT_EQ(store.saveOwnLayout(mine), folder / ".keys/layouts/my-layout_2.json");
    folder.put(".keys/layouts/copy.json", mine.text());
    folder.put(".keys/layouts/broken.json", "{");
    FileProblems problems;
    EXPECT_THAT(store.ownLayouts(&problems), ElementsAre(mine));
    ASSERT_EQ(problems.size(), 2u);
    EXPECT_EQ(problems[0].path.filename(), "broken.json");
    EXPECT_EQ(problems[1], (FileProblem{folder / ".keys/layouts/copy.json", 0,
                                        "its id is \"my-layout_2\", which is not its name"}));
}

TEST(OwnLayouts, NameAFolderThatCannotBeListed) {
    const TemporaryFolder folder;
    folder.put(".keys/layouts", "");
    FileProblems problems;
    EXPECT_THAT(Store(folder.path(), FileFormat::org).ownLayouts(&problems), ElementsAre());
    EXPECT_THAT(problems, ElementsAre(FileProblem{folder / ".keys/layouts", 0, "Not a directory"}));
}

TEST(OwnLayouts, TakeOnlyIDsThatCanNameAFile) {
    const TemporaryFolder folder;
    const Store store(folder.path(), FileFormat::org);
    for (const std::string_view id :
         {"", "auto", "system", "-", "-a", "../a", "a/b", "A", "ä", "a b", ".a", "a.json"}) {
        EXPECT_FALSE(Store::isSafeLayoutID(id)) << id;
        EXPECT_THROW(store.saveOwnLayout({.id = std::string(id)}), LayoutProblem) << id;
    }
    EXPECT_TRUE(Store::isSafeLayoutID(std::string(64, 'z')) && !Store::isSafeLayoutID(std::string(65, 'z')));
}

}  // namespace
}  // namespace tapcore

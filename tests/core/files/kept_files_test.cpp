#include "core/files/kept_files.h"

#include <gmock/gmock.h>

#include "core/files/store.h"
#include "core/foundation/digest.h"
#include "tests/support/temporary_folder.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

constexpr const char* mark = R"({"id": "1", "name": "Air"})";

/// The names of what a backup keeps of a folder; what it misses is `missing`.
std::vector<std::string> keptOf(const TemporaryFolder& folder, FileProblems& missing) {
    std::vector<std::string> names;
    for (const KeptFile& file : filesToKeep(folder.path(), missing)) names.push_back(file.name);
    return names;
}

TEST(KeptFiles, AreThoseOfTheFolderAndItsMachines) {
    const TemporaryFolder folder;
    folder.put("Air/.keys-mac", mark);
    for (const char* name : {"Air/days/2026-09-20.org", "Air/practice/2026-09-20.org", "days/2026-09-19.md",
                             ".keys/config.json", ".keys/layouts/own.json", "reports/2026-09.org",
                             "assistant/history/a b.md", "days/.DS_Store", "reports/.hidden", ".restored",
                             "Air/.restored", "Air/notes.txt", "mine/days/2026-09-20.org", "mine.txt"})
        folder.put(name, "x");
    FileProblems missing;
    EXPECT_THAT(
        keptOf(folder, missing),
        testing::ElementsAre(".keys/config.json", ".keys/layouts/own.json", "Air/.keys-mac",
                             "Air/days/2026-09-20.org", "Air/practice/2026-09-20.org",
                             "assistant/history/a b.md", "days/2026-09-19.md", "reports/2026-09.org"));
    EXPECT_THAT(missing, testing::IsEmpty());
}

TEST(KeptFiles, OfAMergeThatWasCutOffAreTheOnesThatCount) {
    const TemporaryFolder folder;
    const auto digestLine = [](const std::string& text, const char* file) {
        return "| " + hexDigest(text) + " | " + file + " |\n";
    };
    const std::string before = "* Keys\n| 9 | 0 | 50 |\n", held = "## Keys\n| 8 | 0 | 60 |\n",
                      merged = "* Keys\n| 8 | 0 | 60 |\n| 9 | 0 | 50 |\n";
    const std::string note = "# Merging\n" + digestLine(merged, "2026-09-20.org") +
                             digestLine(held, "2026-09-20.md") + digestLine(before, "2026-09-20.org");
    folder.put("days/2026-09-20.md", held);
    folder.put("days/.2026-09-20.merging", note);
    FileProblems missing;

    folder.put("days/2026-09-20.org", merged);
    EXPECT_THAT(keptOf(folder, missing), testing::ElementsAre("days/2026-09-20.org"));

    folder.put("days/2026-09-20.org", before);
    folder.put("days/.2026-09-20.merged", merged);
    EXPECT_THAT(keptOf(folder, missing), testing::ElementsAre("days/2026-09-20.md", "days/2026-09-20.org"))
        << "the merged text has not taken its place";
    EXPECT_THAT(missing, testing::IsEmpty());

    fs::remove(folder / "days/.2026-09-20.merging");
    fs::create_directory(folder / "days/.2026-09-20.merging");
    (void)keptOf(folder, missing);
    EXPECT_EQ(missing.size(), 1U) << "which of them count is not known";
}

TEST(KeptFiles, FromElsewhereMustBeNamedLikeThoseOfAFolder) {
    const std::string longName(256, 'x');
    const std::pair<std::vector<std::string>, std::string> cases[] = {
        {{"days/2026-09-20.org", "assistant/history/a.md", ".keys/layouts/x.json"}, ""},
        {{"Air/.keys-mac", "Air/days/2026-09-20.org"}, ""},
        {{""}, ": not a file of a data folder"},
        {{"days"}, "days: not a file of a data folder"},
        {{"days/"}, "days/: not a file of a data folder"},
        {{"days//a"}, "days//a: not a file of a data folder"},
        {{"days/./a"}, "days/./a: not a file of a data folder"},
        {{"days/../a"}, "days/../a: not a file of a data folder"},
        {{"/days/a"}, "/days/a: not a file of a data folder"},
        {{"../days/a"}, "../days/a: not a file of a data folder"},
        {{".ssh/config"}, ".ssh/config: not a file of a data folder"},
        {{"days/.2026-09-20.merging"}, "days/.2026-09-20.merging: not a file of a data folder"},
        {{"days/.2026-09-20.org.icloud"}, "days/.2026-09-20.org.icloud: not a file of a data folder"},
        {{".keys/.hidden/a"}, ".keys/.hidden/a: not a file of a data folder"},
        {{"Air/.keys-mac", "Air/days/.x"}, "Air/days/.x: not a file of a data folder"},
        {{"Air/.keys-mac", "Air/notes"}, "Air/notes: not a file of a data folder"},
        {{"days/" + longName}, "days/" + longName + ": not a file of a data folder"},
        {{"days/a\xFF"}, "days/a\xFF: not a file of a data folder"},
        {{"Air/days/2026-09-20.org"}, "Air: not a machine's folder"},
        {{"days/a", "days/a"}, "days/a: there twice"},
        {{"days/a", "days/a/b"}, "days/a: a file and a folder"},
    };
    for (const auto& [names, why] : cases) {
        std::vector<KeptFile> files;
        for (const std::string& name : names)
            files.push_back({name, name.ends_with(".keys-mac") ? mark : "x", {}});
        EXPECT_EQ(whyNotOfAFolder(files).value_or(""), why);
    }
}

}  // namespace
}  // namespace tapcore

#include <gmock/gmock.h>

#include "core/files/folder_config.h"
#include "core/files/mac_folder.h"
#include "core/files/store.h"
#include "core/foundation/json_fields.h"
#include "tests/support/message_of.h"
#include "tests/support/temporary_folder.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view drive = "Library/Mobile Documents/com~apple~CloudDocs";

TEST(FolderLocation, LooksInTheCloudThenForOlderVersionsThenTakesDocuments) {
    const TemporaryFolder home;
    const auto cloud = [&](std::string_view name) { return home / drive / name; };
    EXPECT_EQ(Store::defaultRoot(home.path()), home / "Documents/Tappora");
    EXPECT_EQ(Store::iCloudRoot(home.path()), std::nullopt);
    std::filesystem::create_directories(home / "Documents/Typing Ledger");
    EXPECT_EQ(Store::defaultRoot(home.path()), home / "Documents/Tappora") << "it holds no days";
    std::filesystem::create_directories(home / "Documents/Typing Ledger/days");
    EXPECT_EQ(Store::defaultRoot(home.path()), Store::legacyRoot(home.path()));
    std::filesystem::create_directories(home / drive);
    EXPECT_EQ(Store::defaultRoot(home.path()), cloud("Tappora"));
    for (const char* name : {"Track My Hands", "Pellot", "Morvint", "Tappora"}) {
        std::filesystem::create_directory(cloud(name));
        EXPECT_EQ(Store::defaultRoot(home.path()), cloud(name));
    }
}

TEST(FolderLocation, AFolderIsSharedByItsPlaceOrByAMarker) {
    const TemporaryFolder folder;
    EXPECT_FALSE(Store::isShared(folder.path()));
    EXPECT_TRUE(Store::isShared("/Users/me/Library/Mobile Documents/x"));
    EXPECT_FALSE(Store::isShared("/Users/me/Library/Mobile Documents"));
    const fs::path inDrive = folder / drive / "Tappora";
    fs::create_directories(inDrive);
    fs::create_symlink(inDrive, folder / "link");
    EXPECT_TRUE(Store::isShared(folder / "link"));
    const fs::path before = fs::current_path();
    fs::current_path(inDrive);
    EXPECT_TRUE(Store::isShared("."));
    fs::current_path(before);
    std::filesystem::create_directories(folder / "Air/.keys-mac");
    EXPECT_TRUE(Store::isShared(folder.path())) << "a marker that is no file is one all the same";
}

TEST(MacFolder, MakesANameOfAMachinesName) {
    const std::string long_name(70, 'a');
    const struct {
        std::string name, folder;
    } cases[] = {{"Studio", "Studio"},
                 {"days", "days (Mac)"},
                 {".keys", "keys"},
                 {".hidden/one", "hidden-one"},
                 {"a:b/c", "a-b-c"},
                 {"", "Mac"},
                 {"...", "Mac"},
                 {" \u3000Büro\u00A0", "Büro"},
                 {". x", " x"},
                 {"e\u0301" + long_name, "e\u0301" + std::string(59, 'a')},
                 {long_name, std::string(60, 'a')}};
    for (const auto& [name, folder] : cases) EXPECT_EQ(MacFolder::sanitized(name), folder) << name;
}

TEST(MacFolder, IsFoundByItsIdAndElseTakesAFreeName) {
    const TemporaryFolder root;
    EXPECT_EQ(MacFolder::resolve(root.path(), "id-1", "Studio"), "Studio");
    EXPECT_EQ(root.text("Studio/.keys-mac"), "{\n  \"id\": \"id-1\",\n  \"name\": \"Studio\"\n}\n");
    EXPECT_EQ(MacFolder::resolve(root.path(), "id-2", "Studio"), "Studio 2");
    std::filesystem::create_directory(root / "Studio 3");
    EXPECT_EQ(MacFolder::resolve(root.path(), "id-3", "Studio"), "Studio 4");
    root.put(".tappora.new/.keys-mac", MacFolder::Mark{"id-9", "Attic"}.text());  // a crash left it
    EXPECT_EQ(MacFolder::resolve(root.path(), "id-9", "Attic"), "Attic");
    EXPECT_FALSE(isThere(root / ".tappora.new"));
    EXPECT_EQ(MacFolder::resolve(root.path(), "id-1", "Renamed"), "Studio");
    EXPECT_EQ(MacFolder::readMark(root / "Studio")->name, "Renamed");
    std::filesystem::rename(root / "Studio 2", root / "Keller");
    EXPECT_EQ(MacFolder::resolve(root.path(), "id-2", "Studio"), "Keller");

    const std::string long_name(70, 'x');
    EXPECT_EQ(MacFolder::resolve(root.path(), "id-5", long_name), std::string(60, 'x'));
    EXPECT_EQ(MacFolder::resolve(root.path(), "id-6", long_name), std::string(58, 'x') + " 2");
    std::string bytes;
    for (int i = 0; i < 60; ++i) bytes += "👩‍👩‍👧";
    EXPECT_LE(MacFolder::resolve(root.path(), "id-7", bytes).size(), 255U);
}

TEST(MacFolder, PassesOverMarkersThatDoNotDecode) {
    const TemporaryFolder root;
    root.put("A/.keys-mac", "");
    root.put("B/.keys-mac", "[1]");
    root.put("C/.keys-mac", R"({"id": 7, "name": "C"})");
    std::filesystem::create_directories(root / "D/.keys-mac");
    std::filesystem::create_directory(root / "E");
    std::filesystem::create_symlink("/nowhere", root / "E/.keys-mac");
    EXPECT_EQ(MacFolder::resolve(root.path(), "7", "A"), "A 2");
    EXPECT_EQ(MacFolder::readMark(root / "C"), std::nullopt);
}

TEST(FolderConfig, FillsInWhatIsMissingAndFallsBackWholeWhenAnythingIsWrong) {
    const TemporaryFolder root;
    FolderConfig markdown;
    markdown.format = FileFormat::markdown;
    const std::pair<std::string_view, FolderConfig> cases[] = {
        {R"({"format": "markdown"})", markdown},
        {"\xEF\xBB\xBF{\"format\": \"markdown\", \"board\": null, \"later\": [1]}", markdown},
        {R"({"format": "markdown", "named_keys": 1})", {}},
        {"", {}},
    };
    for (const auto& [text, config] : cases) {
        root.put(".keys/config.json", text);
        EXPECT_EQ(FolderConfig::read(root.path()), config) << text;
    }
    EXPECT_EQ(FolderConfig::read(root / "nowhere"), FolderConfig{});
    const std::pair<std::string_view, const char*> faults[] = {
        {R"({"format": "markdown", "named_keys": 1})", "named_keys: not true or false: 1"},
        {R"({"format": "Markdown"})", "format: neither org nor markdown: \"Markdown\""},
        {R"({"format": "markdown", "labels": {"a/1": 2}})", "labels.a/1: not a string: 2"},
        {"[]", "the document: not an object: []"},
    };
    for (const auto& [text, why] : faults)
        EXPECT_EQ(messageOf<JsonError>([&] { FolderConfig::decode(text); }), why);
}

TEST(FolderConfig, IsWrittenForPeopleAndReadBack) {
    const TemporaryFolder root;
    FolderConfig config;
    config.board = "planck";
    config.setLabel(36, "planck", "Hyper");
    config.setLabel(37, "planck", "gone");
    config.setLabel(37, "planck", "");
    config.setLearned(10, false, "ß", "planck", "de");
    config.setLearned(10, true, "?", "planck", "de");
    config.write(root.path()).requireSafe();
    EXPECT_EQ(root.text(".keys/config.json"), R"({
  "board": "planck",
  "format": "org",
  "labels": {
    "planck/36": "Hyper"
  },
  "layout": "auto",
  "learned": {
    "planck/de/10": {
      "plain": "ß",
      "shifted": "?"
    }
  },
  "named_keys": false
}
)");
    EXPECT_EQ(FolderConfig::read(root.path()), config);
    EXPECT_EQ(config.label(36, "planck"), "Hyper");
    EXPECT_EQ(config.label(36, "plan"), std::nullopt);
}

TEST(FolderConfig, KeepsWhatALaterVersionStored) {
    const TemporaryFolder root;
    root.put(".keys/config.json", R"({"board": "corne", "later": {"a": [1]}, "labels": {"x/1": "gone"}})");
    FolderConfig config;
    config.board = "planck";
    config.write(root.path()).requireSafe();
    EXPECT_EQ(root.text(".keys/config.json"), R"({
  "board": "planck",
  "format": "org",
  "labels": {},
  "later": {
    "a": [
      1
    ]
  },
  "layout": "auto",
  "learned": {},
  "named_keys": false
}
)");
    root.put(".keys/config.json", "[1]");
    config.write(root.path()).requireSafe();
    EXPECT_EQ(root.text(".keys/config.json"), config.text());
}

TEST(FolderConfig, LearnsKeysByBoardAndLayout) {
    FolderConfig config;
    config.learned["planck/1"] = {"old", ""};
    config.learned["planck/2"] = {"older", ""};
    config.setLearned(1, false, "s", "planck", "us");
    config.setLearned(1, false, "o", "planck-ez", "us");
    EXPECT_EQ(config.learnedCount("planck"), 3U);
    config.migrateLearned("us");
    EXPECT_EQ(config.learnedKeys("planck", "us"), (Legends{{1, {"s"}}, {2, {"older"}}}));
    config.setLearned(2, true, "S", "planck", "us");
    EXPECT_EQ(config.learnedKeys("planck", "us").at(2), (std::vector<std::string>{"older", "S"}));
    config.forgetLearned("planck");
    EXPECT_EQ(config.learnedCount("planck"), 0U);
    EXPECT_EQ(config.learnedCount("planck-ez"), 1U);
}

}  // namespace
}  // namespace tapcore

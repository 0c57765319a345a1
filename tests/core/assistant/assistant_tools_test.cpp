#include "core/assistant/assistant_tools.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <nlohmann/json.hpp>

#include "core/assistant/tool_text.h"
#include "tests/support/temporary_folder.h"

namespace tapcore {
namespace {

using nlohmann::json;
using testing::ElementsAre;
using Output = AssistantTools::Output;

const Day today(2026, 9, 20);

std::string expected(std::string_view name) {
    return readFile(std::filesystem::path(TEST_DATA) / "assistant" / name).text;
}

Output fine(std::string text, std::vector<std::string> read = {}) {
    return {std::move(text), false, std::move(read)};
}
Output error(std::string text) { return {std::move(text), true, {}}; }
Output notOfFolder(const std::string& path) { return error("Not a file of this folder: " + path); }
Output noSuchDay(const std::string& path) {
    return fine(
        "There is no " + path +
        " — a day without typing has no file. This is normal; say so plainly. list_files shows the ones that "
        "exist.");
}

/// Every name below a folder with its bytes and time.
auto everythingIn(const std::filesystem::path& folder) {
    std::map<std::string, std::pair<std::string, std::filesystem::file_time_type>> all;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
        all[entry.path().string()] = {readFile(entry.path()).text, entry.last_write_time()};
    return all;
}

class Tools : public testing::Test {
  protected:
    Output run(std::string_view name, const json& arguments) const { return tools().run(name, arguments); }
    AssistantTools tools() const { return {folder.path(), macs, store, today, legends}; }

    TemporaryFolder folder;
    std::vector<std::string> macs;
    std::optional<Store> store;
    Legends legends = {{0, {"a", "A"}}, {1, {"s", "S"}}, {49, {"space"}}};
};

TEST_F(Tools, AreDeclaredWordForWord) {
    store = Store(folder.path(), FileFormat::org);
    std::string text;
    for (const auto& spec : tools().specs()) {
        text += spec.name + "\n" + spec.description + "\n";
        for (const auto& [name, what] : spec.properties) text += "  " + name + ": " + what + "\n";
        for (const auto& name : spec.required) text += "  required: " + name + "\n";
    }
    EXPECT_EQ(text, expected("tools.txt"));
    EXPECT_EQ(tools().spec("nothing"), "");
}

TEST_F(Tools, OfferASummaryOnlyWithAStore) {
    EXPECT_EQ(tools().spec("summary"), "");
    EXPECT_EQ(tools().specs().front().name, "list_files");
    EXPECT_EQ(run("summary", json::object()), error("Unknown tool: summary"));
    EXPECT_EQ(run("delete_all", {{"path", "days"}}), error("Unknown tool: delete_all"));
}

TEST_F(Tools, BearWhateverArgumentsAModelSends) {
    const std::string usage = ". Use days, months, reports or practice.";
    for (const json& arguments : {json(), json(3), json::array({"days"}), json{{"folder", 3}},
                                  json{{"folder", nullptr}}, json{{"folder", {"days"}}}})
        EXPECT_EQ(run("list_files", arguments), error("No such folder: " + usage)) << arguments;
    EXPECT_EQ(run("list_files", {{"folder", ".keys"}}), error("No such folder: .keys" + usage));
    EXPECT_EQ(run("search", {{"query", 5}}), error("Empty query."));
    EXPECT_EQ(run("read_file", json::object()), notOfFolder(""));
    for (const json& path :
         json::parse(R"(["days/a\nb.md", "days/a\u009Bb.md", "days/2026-09-17.md\u0000.org"])"))
        EXPECT_EQ(run("read_file", {{"path", path}}), notOfFolder(path));
    const Output found = run("search", {{"query", std::string(1 << 20, 'q')}});
    EXPECT_EQ(found, fine("No lines contain \"" + std::string(1000, 'q') + "…\"."));
}

TEST_F(Tools, ReadNothingThatALinkPutInTheWayMeanwhileLeadsTo) {
    const TemporaryFolder outside;
    outside.put("days/2026-09-17.org", "secret");
    folder.put("days/2026-09-17.org", "mine");
    folder.put("days/2026-09-18.org", "mine");
    const auto found = tools().resolve("days/2026-09-17.org");
    const auto other = tools().resolve("days/2026-09-18.org");
    std::filesystem::remove(folder / "days/2026-09-18.org");
    std::filesystem::create_symlink(outside / "days/2026-09-17.org", folder / "days/2026-09-18.org");
    const auto read = [&](const std::filesystem::path& file) {
        return DataFileReader(AssistantTools::rootOf(folder.path())).read(file).text;
    };
    EXPECT_EQ(read(*found), "mine");
    EXPECT_EQ(read(*other), "");
    std::filesystem::rename(folder / "days", folder / "away");
    std::filesystem::create_symlink(outside / "days", folder / "days");
    EXPECT_EQ(read(*found), "");
    EXPECT_EQ(read(outside / "days/2026-09-17.org"), "");
}

TEST_F(Tools, ReadWhatIsMissingEmptyOrNoTextPlainly) {
    folder.put("days/2026-09-17.org", "");
    folder.put("days/2026-09-18.org", "caf\xE9");
    std::filesystem::create_directories(folder / "days/2026-09-19.org");
    EXPECT_EQ(run("read_file", {{"path", "days/2026-09-17.org"}}),
              fine("(empty file)", {"days/2026-09-17.org"}));
    EXPECT_EQ(run("read_file", {{"path", "days/" + std::string(252, 'x') + ".org"}}),
              noSuchDay("days/" + std::string(252, 'x') + ".org"));
    for (const std::string path : {"days/2026-09-16.org", "days/2026-09-18.org", "days/2026-09-19.org"})
        EXPECT_EQ(run("read_file", {{"path", path}}), noSuchDay(path));
    EXPECT_EQ(run("search", {{"query", "caf"}}), fine("No lines contain \"caf\"."));
}

TEST_F(Tools, BoundResultsInBytesToo) {
    const std::size_t limit = AssistantTools::byteLimit;
    std::string marks = "e";
    while (marks.size() < 2'000'000) marks += "\u0301";
    for (int line = 0; line < 60; ++line) folder.put("days/" + std::to_string(line) + ".md", marks + "\n");
    legends[0] = {marks};
    store = Store(folder.path(), FileFormat::org);
    Store(folder.path(), FileFormat::org)
        .add(
            [] {
                Tally tally;
                tally.add(0, 9, 1);
                return tally;
            }(),
            0, 0, {}, {}, today);
    const std::string one = run("read_file", {{"path", "days/7.md"}}).text;
    EXPECT_TRUE(one.ends_with("\n[The file is longer: 2000002 bytes; this is the first 287999.]"))
        << one.substr(limit - 9);
    const Output found = run("search", {{"query", "e"}});
    EXPECT_LT(found.text.size(), 2 * limit);
    EXPECT_LT(found.read.size(), 20u);
    EXPECT_TRUE(found.text.ends_with(" more lines — narrow the query."))
        << found.text.substr(found.text.size() - 60);
    EXPECT_LT(run("summary", json::object()).text.size(), limit);
    EXPECT_LT(run("search", {{"query", marks + "x"}}).text.size(), limit);
}

TEST_F(Tools, SumAPeriodUpInSevenLines) {
    folder.put(
        "days/2026-09-19.org",
        "* Keys\n| 9 | 0 | 90 |\n| 9 | 1 | 30 |\n| 23 | 200 | 7 |\n* Chords\n| 9 | shift+cmd | 1 | 12 |\n"
        "* Mouse\n| 9 | 40 | 2 | 1 | 9 | 46780 |\n* Day\n| peak | 88 |\n");
    folder.put("days/2026-09-14.md", "## Keys\n| 8 | 0 | 1 |\n");
    folder.put("days/2026-09-13.md", "## Keys\n| 8 | 0 | 1000 |\n");
    ::mkfifo((folder / "days/2026-09-15.org").c_str(), 0600);  // would be waited for
    store = Store(folder.path(), FileFormat::org);
    EXPECT_EQ(run("summary", json::object()),
              fine(expected("summary.txt") + "\n[Not complete: days/2026-09-15.org: not a regular file]"));
    EXPECT_TRUE(run("summary", {{"to", "2026-09-14"}})
                    .text.starts_with("Period 2026-09-08 to 2026-09-14: 7 days, 2 "));
    EXPECT_EQ(run("summary", {{"from", "2025-02-01"}, {"to", "2025-02-01"}}).text,
              "Period 2025-02-01 to 2025-02-01: 1 days, 0 with typing\n"
              "Keystrokes 0; active hours 0; per active hour 0; busiest minute 0\n"
              "Clicks 0; mouse moved 0.0 m\n"
              "By hour of the day, 0 to 23: 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, "
              "0, 0, 0\n"
              "Most pressed keys: none\nMost used shortcuts: none\nPer day: 2025-02-01 0");
}

TEST_F(Tools, NameTwelveKeysAndTenShortcutsOfAPeriodAtMost) {
    std::string keys = "* Keys\n", chords = "* Chords\n", keysTold, chordsTold;
    legends.clear();
    for (int rank = 1; rank <= 14; ++rank) {
        const std::string code = std::to_string(rank), count = std::to_string(100 - rank);
        const std::string name(1, static_cast<char>('A' + rank));
        legends[static_cast<KeyCode>(rank)] = {std::string(1, static_cast<char>('a' + rank))};
        keys += "| 9 | " + code + " | " + count + " |\n";
        chords += "| 9 | cmd | " + code + " | " + count + " |\n";
        const std::string separator = rank == 1 ? "" : ", ";
        if (rank <= 12) keysTold += separator + name + " " + count;
        if (rank <= 10) chordsTold += separator + "⌘" + name + " " + count;
    }
    folder.put("days/2026-09-19.org", keys + chords);
    store = Store(folder.path(), FileFormat::org);
    const std::string text = run("summary", json::object()).text;
    EXPECT_NE(text.find("\nMost pressed keys: " + keysTold + "\n"), std::string::npos) << text;
    EXPECT_NE(text.find("\nMost used shortcuts: " + chordsTold + "\n"), std::string::npos) << text;
}

TEST_F(Tools, ChangeNothingInTheFolder) {
    macs = {"Studio"};
    folder.put("Studio/.keys-mac", R"({"id":"1","name":"Studio"})");
    folder.put("Studio/days/2026-09-17.org", "* Keys\n| 9 | 0 | 90 |\n");
    folder.put("days/2026-09-17.md", "## Keys\n| 9 | 0 | 90 |\n");
    store = Store(folder.path(), FileFormat::org);
    const auto before = everythingIn(folder.path());
    for (const json& call :
         {json{"summary", json::object()}, json{"list_files", {{"folder", "days"}}},
          json{"read_file", {{"path", "days/2026-09-17.md"}}}, json{"search", {{"query", "keys"}}},
          json{"read_file", {{"path", "reports/none.md"}}}, json{"write_file", {{"path", "x.md"}}}})
        EXPECT_NE(run(call[0].get<std::string>(), call[1]).text, "");
    EXPECT_EQ(everythingIn(folder.path()), before);
}

}  // namespace
}  // namespace tapcore

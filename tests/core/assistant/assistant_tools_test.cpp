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
    const Output found = run("search", {{"query", std::string(1 << 20, 'q')}});
    EXPECT_EQ(found, fine("No lines contain \"" + std::string(1000, 'q') + "…\"."));
}

TEST_F(Tools, RefuseEveryPathThatIsNoDataFile) {
    folder.put(".keys/config.json", "{}");
    folder.put(".keys/notes.md", "secret");
    folder.put("days/.hidden.md", "secret");
    folder.put("days/notes.txt", "secret");
    folder.put("Studio/days/2026-09-17.md", "not a known Mac");
    for (const json& path :
         json::parse(R"(["days/../.keys/config.json", ".keys/config.json", ".keys/notes.md",
            "days/.hidden.md", "days/notes.txt", "days//x.org", "/days/x.org", "/etc/days/x.md", "../days/x.md",
            "days/..", "days%2F2026-09-17.md", "days/..%2Fx/a.md", "Studio/days/2026-09-17.md", "Days/2026-09-17.md",
            "days/md", "assistant/chat.md", "days/a/b/c.md", "days/a\nb.md", "days/a\u009Bb.md", "days/2026-09-17.md\u0000.org", ""])"))
        EXPECT_EQ(run("read_file", {{"path", path}}), notOfFolder(path));
}

TEST_F(Tools, FollowNoLinkOutOfTheFolderNorToTheSettings) {
    const TemporaryFolder outside;
    outside.put("secret.md", "secret");
    outside.put("days/2026-09-01.md", "secret");
    folder.put(".keys/config.md", "secret");
    folder.put("reports/own.md", "secret of my own");
    std::filesystem::create_directories(folder / "days");
    std::filesystem::create_symlink(outside / "secret.md", folder / "days/link.md");
    std::filesystem::create_symlink("../.keys/config.md", folder / "days/settings.md");
    std::filesystem::create_symlink("loop.md", folder / "days/loop.md");
    std::filesystem::create_symlink("../reports/own.md", folder / "days/inside.md");
    std::filesystem::create_symlink(outside / "days", folder / "months");

    for (const std::string path :
         {"days/link.md", "days/settings.md", "days/loop.md", "months/2026-09-01.md"})
        EXPECT_EQ(run("read_file", {{"path", path}}), notOfFolder(path));
    EXPECT_EQ(run("read_file", {{"path", "days/inside.md"}}), fine("secret of my own", {"days/inside.md"}));
    EXPECT_EQ(run("list_files", {{"folder", "days"}}), fine("days/inside.md"));
    EXPECT_EQ(run("list_files", {{"folder", "months"}}), fine("No files."));
    EXPECT_EQ(run("search", {{"query", "secret"}}),
              fine("days/inside.md:1: secret of my own\nreports/own.md:1: secret of my own",
                   {"days/inside.md", "reports/own.md"}));
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
    EXPECT_EQ(DataFileReader(folder.path()).text(*found), "mine");
    EXPECT_EQ(DataFileReader(folder.path()).text(*other), std::nullopt);
    std::filesystem::rename(folder / "days", folder / "away");
    std::filesystem::create_symlink(outside / "days", folder / "days");
    EXPECT_EQ(DataFileReader(folder.path()).text(*found), std::nullopt);
    EXPECT_EQ(DataFileReader(folder.path()).text(outside / "days/2026-09-17.org"), std::nullopt);
}

TEST_F(Tools, ListNewestFirstByFileNameWithTheMacsInOrder) {
    macs = {"Air", "Studio"};
    for (const char* name :
         {"days/2026-09-17.org", "Studio/days/2026-09-17.org", "Air/days/2026-09-18.md",
          "Air/days/2026-09-17.org", "Air/days/.2026-09-19.org.icloud", "days/2026-09-20.tsv"})
        folder.put(name, "");
    std::filesystem::create_directories(folder / "days/2026-09-21.org");
    EXPECT_EQ(
        run("list_files", {{"folder", "days"}}).text,
        "Air/days/2026-09-18.md\ndays/2026-09-17.org\nAir/days/2026-09-17.org\nStudio/days/2026-09-17.org");
    EXPECT_EQ(run("list_files", {{"folder", "days"}, {"contains", "Air/days/2026-09-17"}}).text,
              "Air/days/2026-09-17.org");
    EXPECT_EQ(run("list_files", {{"folder", "days"}, {"contains", "AIR"}}).text, "No files.");
}

TEST_F(Tools, ListAtMost120Names) {
    for (int day = 1; day <= 121; ++day) folder.put("reports/" + std::to_string(1000 + day) + ".md", "");
    const std::string all = run("list_files", {{"folder", "reports"}}).text;
    EXPECT_TRUE(all.starts_with("reports/1121.md\nreports/1120.md\n"));
    EXPECT_TRUE(all.ends_with("\nreports/1002.md\n… and 1 older — narrow with \"contains\"."));
    EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), 120);
}

TEST_F(Tools, ReadADayOfSeveralMacsAsParts) {
    macs = {"Air", "Studio"};
    folder.put("Air/days/2026-09-17.org", "one\n");
    folder.put("Studio/days/2026-09-17.org", "two");
    folder.put("Studio/days/2026-09-18.org", "alone\n");
    const std::string heads = " — one Mac's part; add the Macs together ===\n";
    EXPECT_EQ(
        run("read_file", {{"path", "days/2026-09-17.org"}}),
        fine("=== Air/days/2026-09-17.org" + heads + "one\n\n=== Studio/days/2026-09-17.org" + heads + "two",
             {"Air/days/2026-09-17.org", "Studio/days/2026-09-17.org"}));
    EXPECT_EQ(run("read_file", {{"path", "Studio/days/2026-09-17.org"}}),
              fine("two", {"Studio/days/2026-09-17.org"}));
    EXPECT_EQ(run("read_file", {{"path", "days/2026-09-18.org"}}),
              fine("alone\n", {"Studio/days/2026-09-18.org"}));
    folder.put("days/2026-09-18.org", "from before\n");
    EXPECT_THAT(run("read_file", {{"path", "days/2026-09-18.org"}}).read,
                ElementsAre("days/2026-09-18.org", "Studio/days/2026-09-18.org"));
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

TEST_F(Tools, CutLongFilesByCharacters) {
    const auto repeated = [](std::string_view text, int times) {
        std::string all;
        while (times-- > 0) all += text;
        return all;
    };
    const std::string family = "👩‍👩‍👧";  // one character of 18 bytes
    folder.put("days/a.md", repeated(family, 12000));
    folder.put("days/b.md", repeated(family, 12001));
    EXPECT_EQ(run("read_file", {{"path", "days/a.md"}}).text, repeated(family, 12000));
    EXPECT_EQ(run("read_file", {{"path", "days/b.md"}}).text,
              repeated(family, 12000) + "\n[The file is longer: 12001 characters; this is the first 12000.]");
    macs = {"Air"};
    folder.put("Air/days/b.md", "more");
    const Output parts = run("read_file", {{"path", "days/b.md"}});
    EXPECT_TRUE(parts.text.starts_with("=== days/b.md — one Mac's part"));
    EXPECT_TRUE(parts.text.ends_with(family + "\n[Longer; this is the first 12000 characters.]"));
    EXPECT_THAT(parts.read, ElementsAre("days/b.md")) << "nothing of the other part is in the text";
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

TEST_F(Tools, SearchEveryFileWithoutRegardToCase) {
    macs = {"Studio"};
    folder.put("reports/a.md", "Straße\n\nΟΔΟΣ\r\nlast shift+cmd");
    folder.put("days/2026-09-02.org", "| 9 | shift+cmd | 1 | 4 |\n");
    folder.put("days/2026-09-01.org", "| 9 | SHIFT+cmd | 1 | 4 |\n");
    folder.put("Studio/days/2026-09-01.org", "shift+cmd shift+cmd\nnothing\nshift+cmd\n");
    folder.put("Other/days/2026-09-01.org", "shift+cmd of no Mac");
    folder.put("assistant/chat.md", "shift+cmd");
    EXPECT_EQ(
        run("search", {{"query", "Shift+CMD"}}),
        fine("days/2026-09-01.org:1: | 9 | SHIFT+cmd | 1 | 4 |\n"
             "days/2026-09-02.org:1: | 9 | shift+cmd | 1 | 4 |\n"
             "Studio/days/2026-09-01.org:1: shift+cmd shift+cmd\n"
             "Studio/days/2026-09-01.org:3: shift+cmd\n"
             "reports/a.md:4: last shift+cmd",
             {"days/2026-09-01.org", "days/2026-09-02.org", "Studio/days/2026-09-01.org", "reports/a.md"}));
    EXPECT_EQ(run("search", {{"query", "STRASSE"}}).text, "reports/a.md:1: Straße");
    EXPECT_EQ(run("search", {{"query", "οδοσ"}}).text, "reports/a.md:3: ΟΔΟΣ");
    EXPECT_EQ(run("search", {{"query", "nothing\nshift"}}).text, "No lines contain \"nothing\nshift\".");
}

TEST_F(Tools, SearchShowsAtMost60LinesAndNoEndlessOne) {
    folder.put("reports/a.md", std::string(5000, 'x') + "\n");
    std::string lines;
    for (int i = 0; i < 60; ++i) lines += "x\n";
    folder.put("reports/b.md", lines);
    const Output found = run("search", {{"query", "X"}});
    EXPECT_TRUE(
        found.text.starts_with("reports/a.md:1: " + std::string(1000, 'x') + "…\nreports/b.md:1: x\n"));
    EXPECT_TRUE(found.text.ends_with("reports/b.md:59: x\n… and 1 more lines — narrow the query."));
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
    EXPECT_EQ(run("summary", json::object()), fine(expected("summary.txt")));
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

TEST_F(Tools, SummaryTakesEveryPeriodOrSaysWhyNot) {
    store = Store(folder.path(), FileFormat::org);
    const auto firstLine = [&](const json& arguments) {
        const Output output = run("summary", arguments);
        return (output.isError ? "error: " : "") + output.text.substr(0, output.text.find('\n'));
    };
    EXPECT_EQ(firstLine({{"from", "2026-09-21"}}), "error: \"from\" is after \"to\".");
    EXPECT_EQ(firstLine({{"from", "yesterday"}}), "error: Not a day: yesterday; use YYYY-MM-DD.");
    EXPECT_EQ(firstLine({{"to", ""}}), "error: Not a day: ; use YYYY-MM-DD.");
    EXPECT_EQ(firstLine({{"to", 20260920}}), "Period 2026-09-14 to 2026-09-20: 7 days, 0 with typing");
    EXPECT_EQ(firstLine({{"from", "2026-02-28"}, {"to", "2026-02-31"}}),
              "Period 2026-02-28 to 2026-03-03: 4 days, 0 with typing");
    EXPECT_EQ(firstLine({{"from", "2025-08-17"}}),
              "Period 2025-08-17 to 2026-09-20: 400 days, 0 with typing");
    EXPECT_EQ(firstLine({{"from", "0001-01-01"}}),
              "Period 2025-08-17 to 2026-09-20: 400 days, 0 with typing (cut to the last 400 days)");
}

TEST_F(Tools, KnowTheMacThatAloneWroteASharedFolder) {
    folder.put("Studio/.keys-mac", R"({"id":"1","name":"Studio"})");
    folder.put("Studio/days/2026-09-17.org", "one\n");
    const AssistantTools made =
        AssistantTools::over(Store(folder.path(), FileFormat::org, "Studio"), today, {});
    EXPECT_EQ(made.run("list_files", {{"folder", "days"}}).text, "Studio/days/2026-09-17.org");
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

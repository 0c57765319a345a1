#include "core/keyboard/catalog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/temporary_folder.h"

namespace tapcore {
namespace {

using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;

Layout layout(std::string id, std::optional<std::string> base, Legends legends = {}) {
    return {.id = id, .name = id, .base = std::move(base), .legends = std::move(legends)};
}

Board board(std::string id, const std::vector<KeyCode>& codes) {
    Board board{.id = id, .name = id};
    for (const KeyCode code : codes)
        board.keys.push_back({.id = "k" + std::to_string(code), .keyCode = code});
    return board;
}

std::string layoutText(std::string_view id, std::string_view legends) {
    return R"({"id": ")" + std::string(id) + R"(", "name": "N", "legends": )" + std::string(legends) + "}";
}

std::string whyRefused(const TemporaryFolder& folder) {
    try {
        Catalog::read(folder / "none", folder.path());
    } catch (const Catalog::FileError& error) {
        return error.what();
    }
    return "";
}

TEST(Catalog, ReadsFoldersByFileNameAndSortsByName) {
    const TemporaryFolder folder;
    folder.put("Layouts/2.json", layoutText("second", "{}"));
    folder.put("Layouts/1.json", layoutText("first", "{}"));
    folder.put("Layouts/notes.txt", "no layout");
    folder.put("Boards/small.json", board("small", {0}).text());
    const Catalog catalog = Catalog::bundled(folder.path());
    EXPECT_THAT(catalog.layouts, ElementsAre(Field(&Layout::id, "first"), Field(&Layout::id, "second")));
    EXPECT_EQ(catalog.board("small"), &catalog.boards[0]);
    EXPECT_EQ(catalog.layout("third"), nullptr);
    EXPECT_EQ(Catalog::bundled(folder / "missing"), Catalog({}, {}));
}

TEST(Catalog, NamesTheFirstFileThatIsNoLayout) {
    const TemporaryFolder folder;
    folder.put("b.json", "[]");
    EXPECT_EQ(whyRefused(folder), "b.json: the document: not an object");
    folder.put("a.json", layoutText("a", R"({"x1": ["a"]})"));
    EXPECT_EQ(whyRefused(folder), "a.json: x1 is not a key code");
    std::filesystem::create_directory(folder / "A.json");
    EXPECT_EQ(whyRefused(folder), "A.json: Is a directory");
    std::filesystem::create_symlink("nowhere", folder / "0.json");
    EXPECT_EQ(whyRefused(folder), "0.json: No such file or directory");
    folder.put(".json", "{}");
    std::filesystem::resize_file(folder / ".json", 100'000'000);
    EXPECT_EQ(whyRefused(folder), ".json: File too large");
}

TEST(Catalog, AddedLayoutsReplaceThoseOfTheirID) {
    const Layout other{.id = "x", .name = "m"};
    const Layout replacement{.id = "a", .name = "m"};
    const Catalog catalog =
        Catalog({}, {layout("z", {}), layout("a", {}), layout("m", {})}).adding({other, replacement});
    EXPECT_THAT(catalog.layouts, ElementsAre(layout("m", {}), other, replacement, layout("z", {})));
}

TEST(Catalog, LegendsOfNearerLayoutsOverrideThoseOfTheirBases) {
    const Catalog catalog(
        {}, {layout("root", {}, {{12, {"a", "A"}}, {13, {"b", "B"}}, {14, {"c"}}}),
             layout("middle", "root", {{13, {"m"}}}), layout("top", "middle", {{12, {"q", "Q"}}}),
             layout("lost", "nowhere", {{1, {"s"}}})});
    EXPECT_EQ(catalog.legends("top"), (Legends{{12, {"q", "Q"}}, {13, {"m"}}, {14, {"c"}}}));
    EXPECT_EQ(catalog.legends("lost"), (Legends{{1, {"s"}}}));
    EXPECT_EQ(catalog.legends("nowhere"), Legends{});
}

TEST(Catalog, LegendsStopWhereBasesLeadBack) {
    const Catalog catalog({}, {layout("a", "b", {{1, {"a"}}}), layout("b", "a", {{1, {"b"}}, {2, {"b"}}})});
    EXPECT_EQ(catalog.legends("a"), (Legends{{1, {"a"}}, {2, {"b"}}}));
}

TEST(Catalog, TellsProblemsOfBoardsThenIDsThenBasesThenLegends) {
    const Legends none = {{1, {}}};
    const Legends full = {{0, {"a"}}, {1, {"s"}}, {130, {"x"}}};
    Layout twice = layout("b", {}, full);
    twice.name = "z";
    const Catalog catalog({board("y", {130}), board("x", {0, 1}), board("x", {1})},
                          {layout("e", "d", full), layout("d", "c", full),
                           layout("c", "d", {{1, {"a", "b", "c"}}}), layout("b", "missing", none), twice});
    EXPECT_THAT(
        catalog.problems(),
        ElementsAre("y: k130 sends 130, beyond what is counted", "board id x is used twice",
                    "layout id b is used twice", "b: base missing is not a layout",
                    "c: its bases lead back to c", "d: its bases lead back to d",
                    "e: its bases lead back to d", "b: no legend for x's key codes [0]",
                    "b: no legend for y's key codes [130]", "b: no legend for x's key codes [0]",
                    "b: no legend for y's key codes [130]", "b: key code 1 needs one or two legends, has 0",
                    "c: key code 1 needs one or two legends, has 3",
                    "b: key code 1 needs one or two legends, has 0"));
}

TEST(Catalog, StandsManyKeysLongChainsAndManyProblems) {
    Board large{.id = "large"};
    for (int i = 0; i < 10'000; ++i) large.keys.push_back({.id = "k", .keyCode = KeyCode{36}, .w = 0});
    std::vector<Layout> chain;
    for (int i = 0; i < 200; ++i)
        chain.push_back(
            layout("l" + std::to_string(i), "l" + std::to_string(i + 1), {{KeyCode(i % 36), {}}}));
    const auto problems = Catalog({large}, chain).problems();
    // Of the keys: 9,999 repeated ids and codes, 10,000 without size. Of the layouts: a base chain that ends
    // nowhere and a missing legend each, and 35 to 36 empty ones for all but the last few.
    EXPECT_EQ(problems.size(), 2 * 9'999u + 10'000u + 2 * 200u + 36 * 200u - 35 * 36 / 2);
}

TEST(Catalog, ReadsTheExamplesOfTheDocument) {
    const std::string text =
        readFile(std::filesystem::path(RESOURCES).parent_path() / "docs/boards-and-layouts.md").text;
    const auto example = [&](std::size_t from) {
        const std::size_t start = text.find("```json\n", from) + 8;
        return text.substr(start, text.find("```", start) - start);
    };
    const Board board = Board::parse(example(0));
    const Layout layout = Layout::parse(example(text.find("## A layout")));
    const Layout base{.id = "qwerty", .name = "Q", .legends = {{0, {"a", "A"}}, {36, {"return"}}}};
    EXPECT_THAT(Catalog({board}, {layout, base}).problems(), IsEmpty());
}

TEST(Catalog, BundledBoardsAndLayoutsAreSound) {
    if (!std::filesystem::exists(RESOURCES)) GTEST_SKIP() << "no resources in this tree";
    const Catalog catalog = Catalog::bundled(RESOURCES);
    EXPECT_GE(catalog.boards.size(), 24u);
    EXPECT_GE(catalog.layouts.size(), 14u);
    EXPECT_THAT(catalog.problems(), IsEmpty());
}

}  // namespace
}  // namespace tapcore

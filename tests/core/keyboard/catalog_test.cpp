#include "core/keyboard/catalog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/message_of.h"
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
    return messageOf<Catalog::FileError>([&] { return Catalog(folder / "none", folder.path()); });
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
    EXPECT_EQ(Catalog::bundled(folder / "missing"), Catalog(std::vector<Board>{}, {}));
}

TEST(Catalog, NamesTheFirstFileThatIsNoLayout) {
    const TemporaryFolder folder;
    folder.put("b.json", "[]");
    EXPECT_EQ(whyRefused(folder), "b.json: the document: not an object: []");
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
    const Layout other{.id = "x", .name = "m"}, replacement{.id = "a", .name = "m"};
    const Catalog catalog({}, {layout("z", {}), layout("a", {}), layout("m", {})});
    EXPECT_THAT(catalog.adding({other, replacement}).layouts,
                ElementsAre(layout("m", {}), other, replacement, layout("z", {})));
}

TEST(Catalog, LegendsOfNearerLayoutsStandAndLoopsEnd) {
    const Catalog catalog(
        {}, {layout("root", "top", {{12, {"a", "A"}}, {13, {"b", "B"}}, {14, {"c"}}}),
             layout("middle", "root", {{13, {"m"}}}), layout("top", "middle", {{12, {"q", "Q"}}}),
             layout("lost", "nowhere", {{1, {"s"}}})});
    EXPECT_EQ(catalog.legends("top"), (Legends{{12, {"q", "Q"}}, {13, {"m"}}, {14, {"c"}}}));
    EXPECT_EQ(catalog.legends("lost"), (Legends{{1, {"s"}}}));
    EXPECT_EQ(catalog.legends("nowhere"), Legends{});
}

TEST(Catalog, TellsProblemsOfBoardsThenIDsThenBasesThenLegends) {
    const Legends full = {{0, {"a"}}, {1, {"s"}}, {130, {"x"}}};
    Layout twice = layout("b", {}, full);
    twice.name = "z";
    const Catalog catalog({board("y", {130}), board("x", {0, 1}), board("x", {1})},
                          {layout("e", "c", full), layout("c", "d", {{1, {"a", "b", "c"}}}),
                           layout("d", "c", full), layout("b", "missing", {{1, {}}}), twice});
    EXPECT_THAT(
        catalog.problems(),
        ElementsAre("y: k130 sends 130, beyond what is counted", "board id x is used twice",
                    "layout id b is used twice", "b: base missing is not a layout",
                    "c: its bases lead back to c", "d: its bases lead back to d",
                    "e: its bases lead back to c", "b: no legend for x's key codes [0]",
                    "b: no legend for y's key codes [130]", "b: no legend for x's key codes [0]",
                    "b: no legend for y's key codes [130]", "b: key code 1 needs one or two legends, has 0",
                    "c: key code 1 needs one or two legends, has 3",
                    "b: key code 1 needs one or two legends, has 0"));
}

TEST(Catalog, StandsManyKeysLongChainsAndManyProblems) {
    Board large{.id = "large", .keys = std::vector<Board::Key>(10'000, {.id = "k", .keyCode = KeyCode{36}})};
    std::vector<Layout> chain;
    for (int i = 0; i < 300; ++i)
        chain.push_back(layout(std::to_string(i), std::to_string(i + 1), {{1, {}}}));
    // Each key but the first repeats its id and code; each layout has no legend for it, an empty one, and no
    // last base.
    EXPECT_EQ(Catalog({large}, chain).problems().size(), 2 * 9'999u + 3 * 300u);
}

TEST(Catalog, ReadsTheExamplesOfTheDocument) {
    const auto text =
        readFile(std::filesystem::path(RESOURCES).parent_path() / "docs/boards-and-layouts.md").text;
    const auto example = [&](std::string_view heading) {
        const std::size_t start = text.find("```json\n", text.find(heading)) + 8;
        return text.substr(start, text.find("```", start) - start);
    };
    EXPECT_THAT(Board::parse(example("## A board")).problems(), IsEmpty());
    EXPECT_EQ(Layout::parse(example("## A layout")).base, "qwerty");
}

TEST(Catalog, BundledBoardsAndLayoutsAreSound) {
    const Catalog catalog = Catalog::bundled(RESOURCES);
    EXPECT_GE(catalog.boards.size(), 24u);
    EXPECT_GE(catalog.layouts.size(), 14u);
    EXPECT_THAT(catalog.problems(), IsEmpty());
}

}  // namespace
}  // namespace tapcore

#include "core/keyboard/import/board/board_import.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "core/foundation/file_io.h"
#include "core/keyboard/catalog.h"

namespace tapcore {
namespace {

using testing::ElementsAre;

const std::vector<Board>& known() {
    static const std::vector<Board> boards = Catalog(RESOURCES "/Boards", "").boards;
    return boards;
}

const Board& known(std::string_view id) {
    return *std::find_if(known().begin(), known().end(), [&](const Board& board) { return board.id == id; });
}

BoardImport fromFile(const std::string& name, std::optional<std::string> layout = {}) {
    const FileRead file = readFile(std::string(TEST_DATA "/boards/") + name);
    EXPECT_EQ(file.status, FileRead::Status::read) << name;
    return importBoard(file.text, known(), {.file = name, .layout = std::move(layout)});
}

/// "key 0,1 1x2 10@3,4 +0,1 2x1" for a key at (0, 1), 1 by 2, turned by 10 about (3, 4), with a second
/// rectangle.
std::string place(const Board::Key& key) {
    std::ostringstream text;
    text << key.id << ' ' << key.x << ',' << key.y << ' ' << key.w << 'x' << key.h;
    if (key.r != 0) text << ' ' << key.r << '@' << *key.rx << ',' << *key.ry;
    if (key.second)
        text << " +" << key.second->x << ',' << key.second->y << ' ' << key.second->w << 'x' << key.second->h;
    return text.str();
}

std::vector<std::string> places(const Board& board) {
    std::vector<std::string> result;
    for (const Board::Key& key : board.keys) result.push_back(place(key));
    return result;
}

std::vector<std::string> places(std::string_view rows) { return places(importBoard(rows, {}).board); }

/// Every key of a board is in the other one at the same place, with the same code and fingers.
void expectKeysOf(const Board& wanted, const Board& board) {
    ASSERT_EQ(board.keys.size(), wanted.keys.size());
    for (const Board::Key& key : wanted.keys) {
        if (!key.keyCode) continue;
        const Board::Key* found = board.key(*key.keyCode);
        ASSERT_NE(found, nullptr) << key.id;
        EXPECT_EQ(*found, key) << place(*found) << " for " << place(key);
    }
}

TEST(BoardImport, PutsTheCursorWhereTheEditorDoes) {
    EXPECT_THAT(places(R"(["A",{x:0.5},"B"],[{y:0.25,w:1.5,h:2},"C","D"])"),
                ElementsAre("a 0,0 1x1", "b 1.5,0 1x1", "c 0,1.25 1.5x2", "d 1.5,1.25 1x1"));
    // The centre stays for the rows below, which begin at its x; setting either coordinate goes to the
    // centre.
    EXPECT_THAT(places(R"(["A"],[{r:10,rx:2,ry:3},"B","C"],["D"],[{rx:5,x:1},"E"],[{ry:1},"F"],[{r:0},"G"])"),
                ElementsAre("a 0,0 1x1", "b 2,3 1x1 10@2,3", "c 3,3 1x1 10@2,3", "d 2,4 1x1 10@2,3",
                            "e 6,3 1x1 10@5,3", "f 5,1 1x1 10@5,1", "g 5,2 1x1"));
}

TEST(BoardImport, MakesSecondRectanglesOfTwoPartAndSteppedKeys) {
    EXPECT_THAT(places(R"([{x:0.25,w:1.25,h:2,w2:1.5,h2:1,x2:-0.25},"A","B"],[{w:1.25,w2:1.75,l:true},"C"],
                          [{w:1.5,h:2,w2:2.25,h2:1,x2:-0.75,y2:1},"D"])"),
                ElementsAre("a 1,0 1.25x2 +0.75,0 1.5x1", "b 2.25,0 1x1", "c 0.75,1 1.25x1 +0.75,1 1.75x1",
                            "d 0.75,2 1.5x2 +0,3 2.25x1"));
}

TEST(BoardImport, MovesWhatBeginsLeftOfOrAbove0) {
    EXPECT_THAT(places(R"([{x:-1.5,y:-0.1},"A"],[{x:0.3},"B"])"), ElementsAre("a 0,0 1x1", "b 1.8,1 1x1"));
    EXPECT_THAT(places(R"([{x:0.25,y:1},"A"])"), ElementsAre("a 0.25,1 1x1"));
    // A quarter turn about the origin takes the key left of it.
    EXPECT_THAT(places(R"([{r:90},"A"])"), ElementsAre("a 1,0 1x1 90@1,0"));
}

TEST(BoardImport, TakesEachKindOfFileForTheBoardItShows) {
    const BoardImport raw = fromFile("sixty-raw.txt");
    expectKeysOf(known("60-percent-ansi"), raw.board);
    EXPECT_THAT(raw.dropped, ElementsAre());
    EXPECT_EQ(raw.board.id, "sixty-raw");
    EXPECT_EQ(raw.board.source, "Keyboard Layout Editor file sixty-raw.txt");

    // The legends are German; the places tell what the keys send.
    const BoardImport german = fromFile("full-size-german.json");
    expectKeysOf(known("full-size-iso"), german.board);
    EXPECT_THAT(german.dropped, ElementsAre());
    EXPECT_EQ(german.board.name, "ISO 105 (German)");
    EXPECT_EQ(german.board.maker, "Someone");

    const BoardImport via = fromFile("via-sixty.json");
    expectKeysOf(known("60-percent-ansi"), via.board);
    EXPECT_THAT(via.dropped, ElementsAre("option 0 (Split Backspace), choice 1: 2 keys; choice 0 stays",
                                         "option 1 (ISO Enter), choice 1: 2 keys; choice 0 stays",
                                         "option 2 (Bottom Row), choice 1: 7 keys; choice 0 stays"));

    const BoardImport split = fromFile("qmk-keyboard.json");
    EXPECT_EQ(split.board.maker, "Example Keyboards");
    EXPECT_EQ(split.board.keyCodes().size(), 26u);
    EXPECT_THAT(split.guessed, ElementsAre("26 keys without legends, by their places as on Corne"));
    EXPECT_THAT(split.withoutCode, ElementsAre("16 keys without legends"));
}

TEST(BoardImport, TurnsThumbClustersAndListsKeysWithoutACode) {
    const BoardImport turned = fromFile("thumbs-raw.txt");
    const Board& wanted = known("ergodox-ez");
    ASSERT_EQ(turned.board.keys.size(), wanted.keys.size());
    for (const Board::Key& key : turned.board.keys) {
        const auto isThere = [&](const Board::Key& other) {
            return std::hypot(other.center().x - key.center().x, other.center().y - key.center().y) < 1e-3 &&
                   other.w == key.w && other.h == key.h && other.r == key.r && other.finger == key.finger;
        };
        EXPECT_TRUE(std::any_of(wanted.keys.begin(), wanted.keys.end(), isThere)) << place(key);
    }
    EXPECT_THAT(turned.withoutCode,
                ElementsAre("row 19, key 1 ('): 39 is sent by row 12, key 4 (\" ')",
                            "row 20, key 4 (Hyper): not known", "6 keys without legends"));
}

TEST(BoardImport, DropsWhatIsNoKeyAndClosesTheGap) {
    const BoardImport odd = fromFile("odd-keys.json5");
    EXPECT_THAT(places(odd.board),
                ElementsAre("escape 2.75,0 1x1", "1 3.75,0 1x1", "caps-lock 0.25,1 1.25x1 +0.25,1 1.75x1",
                            "a 2,1 1x1", "s 3,1 1x1", "return 0.75,2 1.5x2 +0,3 2.25x1", "x 2.25,2 1x1",
                            "right-control 3.25,2 1x1", "left-control 4.25,2 1x1",
                            "space 2.75,4.5 1x1 -15@2.75,4.5", "fn 2.75,6.5 1x1 -15@2.75,4.5"));
    EXPECT_THAT(odd.dropped,
                ElementsAre("row 1, key 1 (Logo): a decal", "row 4, key 2 (none): a key without size"));
    EXPECT_THAT(odd.withoutCode, ElementsAre("row 3, key 2 (<i class=\"fa\">x</i>&amp;): not known",
                                             "row 5, key 1 (Fn): not known"));

    const BoardImport knobs = fromFile("via-knobs.json");
    EXPECT_EQ(knobs.board.keys.size(), 9u);
    EXPECT_THAT(knobs.dropped,
                ElementsAre("matrix 0,3: an encoder, not a key", "row 2, key 4: an encoder, not a key"));
    EXPECT_THAT(knobs.withoutCode, ElementsAre("9 keys without legends"));
}

TEST(BoardImport, ReadsTheChosenLayoutOfSeveral) {
    const BoardImport byAlias = fromFile("qmk-info.json", "LAYOUT_kc");
    EXPECT_EQ(byAlias.board.name, "Forty");
    EXPECT_EQ(byAlias.board.keys.size(), 47u);
    EXPECT_THAT(byAlias.dropped,
                ElementsAre("key 48 (Right): an encoder, not a key",
                            "the name LAYOUT_kc: stands for LAYOUT_ortho_4x12, which is the layout read",
                            "layout LAYOUT_planck_mit: not the one chosen"));
    EXPECT_THAT(byAlias.withoutCode,
                ElementsAre("key 40 (L1): not known", "key 41 (L2): not known",
                            "key 43 (Space): 49 is sent by key 42 (Space)", "key 44 (L3): not known"));
    EXPECT_EQ(fromFile("qmk-info.json", "LAYOUT_planck_mit").board.keys.size(), 3u);
}

/// A board as QMK's file, of the keys that are wanted, labelled or not.
std::string firmwareFile(const std::vector<Board::Key>& keys, auto label) {
    std::ostringstream text;
    for (const Board::Key& key : keys) {
        text << (text.str().empty() ? "" : ",") << "{x:" << key.x << ",y:" << key.y << ",w:" << key.w
             << ",h:" << key.h << ",label:'" << label(key) << "'";
        if (key.isTurned()) text << ",r:" << key.r << ",rx:" << *key.rx << ",ry:" << *key.ry;
        text << "}";
    }
    return "{layouts:{LAYOUT:{layout:[" + text.str() + "]}}}";
}

/// The keys that have a wrong code when their file has these labels. Only the key left of 1 has a choice: it
/// is Esc on boards without function keys.
std::string wrongCodes(const std::vector<Board::Key>& keys, auto label) {
    constexpr KeyCode escape = 53;
    const Board board = importBoard(firmwareFile(keys, label), known(), {}).board;
    std::string wrong;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const auto code = board.keys[i].keyCode;
        if (code && code != keys[i].keyCode && code != escape) wrong += " " + keys[i].id;
    }
    return wrong;
}

TEST(BoardImport, RatherHasNoCodesThanThoseOfAnotherBoard) {
    const auto blank = [](const Board::Key&) { return ""; };
    const auto lettered = [](const Board::Key& key) { return key.id.size() == 1 ? key.id : ""; };
    for (const char* id : {"60-percent-ansi", "75-percent-iso", "tenkeyless-ansi", "macbook-jis", "alice",
                           "corne", "ferris-sweep", "iris", "moonlander", "planck", "preonic"}) {
        const Board& board = known(id);
        std::vector<Board::Key> fewerRows, wider;
        const double top = board.bounds().y + 0.9;
        for (Board::Key key : board.keys) {
            if (key.center().y > top) fewerRows.push_back(key);
            if (key.hand == Board::Hand::right) key.x += 2, key.rx = key.rx.value_or(0) + 2;
            wider.push_back(key);
        }
        for (const auto& keys : {board.keys, fewerRows, wider}) {
            EXPECT_EQ(wrongCodes(keys, blank), "") << board.id << ", " << keys.size() << " blank keys";
            EXPECT_EQ(wrongCodes(keys, lettered), "")
                << board.id << ", " << keys.size() << " keys with letters";
        }
    }
}

/// The codes that legends give, in a row of their own, "-" for none.
std::string codesOfLegends(const std::string& legends) {
    std::string text;
    for (const Board::Key& key : importBoard("[" + legends + "]", {}).board.keys)
        text += (text.empty() ? "" : " ") + (key.keyCode ? std::to_string(*key.keyCode) : "-");
    return text;
}

TEST(BoardImport, ReadsKeyCodesFromLegends) {
    const struct {
        std::string_view legends, codes;
    } cases[] = {
        {R"("a","!\n1","\"\n'","?\n/","~\n`","Esc","CAPS_LOCK","Page\nUp","Print Screen")",
         "0 18 39 44 50 53 57 116 105"},
        {R"("7","7\nHome","8","Enter","Enter","+","*","=",".\nDel","Num Lock")",
         "26 89 28 36 76 69 67 24 65 71"},
        {R"("*","+","7")", "28 24 26"},
        {R"("&darr;","&#8593;","&#x21E7;","<RTRN>","<b>&larr;</b>","&#x2318","<")", "125 126 56 36 123 - -"},
        {R"("Shift","Ctrl","AltGr","Alt","","⇧","RCtrl")", "56 59 61 58 - 60 62"},
        {R"("Delete","Backspace")", "117 51"},
        {R"("delete","⌘","fn")", "51 55 63"},
        {R"("Delete","Win","Fn")", "51 55 -"},
        {R"("",{w:6.25},"",{w:2.25},"")", "- 49 -"},
        {R"("\n\n\n\n\n\n\n\n\nTab","&amp;\n7","<b>Q</b>","Ö","F13")", "48 26 12 - 105"},
    };
    for (const auto& [legends, codes] : cases)
        EXPECT_EQ(codesOfLegends(std::string(legends)), codes) << legends;
    std::string marks;  // which only look like the beginning of markup
    while (marks.size() < 300'000) marks += "<b&<&#x";
    EXPECT_EQ(codesOfLegends("\"" + marks + ";>\""), "-");
}

}  // namespace
}  // namespace tapcore

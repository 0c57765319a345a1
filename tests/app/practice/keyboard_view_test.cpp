#include "app/practice/keyboard_view.h"

#include <gtest/gtest.h>

#include <clocale>

#include "core/keyboard/catalog.h"
#include "core/practice/letter_model.h"
#include "tests/app/practice/drawn_frame.h"

namespace tappora {
namespace {

using Letters = std::vector<std::string>;

class KeysOfABoard : public testing::Test {
  protected:
    static void SetUpTestSuite() { std::setlocale(LC_CTYPE, "C.UTF-8"); }

    KeyboardView view(const std::string& board, const std::string& layout,
                      const tapcore::Legends& own = {}) const {
        return KeyboardView(tapcore::Catalog::readBoard(RESOURCES "/Boards/" + board + ".json"),
                            catalog.legends(layout), own);
    }
    static std::string rows(const KeyboardView& view, const std::string& next, std::size_t columns,
                            bool unicode = true) {
        return drawn({view.lines(next, {24, columns, unicode})});
    }
    const tapcore::Catalog catalog = tapcore::Catalog({}, RESOURCES "/Layouts");
};

TEST_F(KeysOfABoard, NamesFingersAsTheLoadOfFingersDoes) {
    const KeyboardView keys = view("full-size-ansi", "qwerty");
    EXPECT_EQ(keys.finger("a"), "left little finger");
    EXPECT_EQ(keys.finger("J"), "right index finger, with left shift");
    EXPECT_EQ(keys.finger(" "), "a thumb");
    EXPECT_EQ(keys.finger("й"), std::nullopt);
}

TEST_F(KeysOfABoard, SaysWhatItCannotType) {
    const Letters ukrainian = tapcore::LetterModel::load("uk", RESOURCES "/Practice")->order;
    const KeyboardView qwerty = view("full-size-ansi", "qwerty");
    EXPECT_EQ(qwerty.remark({"e", "a"}, "qwerty", {}), "");
    EXPECT_EQ(qwerty.remark(ukrainian, "qwerty", {"ukrainian"}),
              "qwerty has no key for о, а, и, н, в, д, т, е and 24 more\n"
              "--layout chooses another layout: ukrainian");
    EXPECT_EQ(qwerty.remark({"e", "é"}, "qwerty", {}),
              "qwerty has no key for é\n--layout chooses another layout; see tappora layouts");
    EXPECT_EQ(view("corne", "bepo").remark({"e", "ç", "w"}, "bepo", {}),
              "corne has no key for ç, w\n--board chooses another keyboard; see tappora boards");
}

TEST_F(KeysOfABoard, NamesTheFingerOfEachKey) {
    const KeyboardView keys = view("full-size-ansi", "qwerty");
    const std::pair<const char*, const char*> cases[] = {
        {"2", "left ring finger"},
        {"w", "left ring finger"},
        {"d", "left middle finger"},
        {"t", "left index finger"},
        {"y", "right index finger"},
        {",", "right middle finger"},
        {".", "right ring finger"},
        {"-", "right little finger"},
        {"Q", "left little finger, with right shift"},
        {"?", "right little finger, with left shift"},
    };
    for (const auto& [character, finger] : cases) EXPECT_EQ(keys.finger(character), finger) << character;
}

TEST_F(KeysOfABoard, DrawsTheRowsThatTypeText) {
    const KeyboardView iso = view("full-size-iso", "qwertz");
    EXPECT_EQ(rows(iso, "z", 80), R"(
 ^   1   2   3   4   5   6   7   8   9   0   ß   ´
PPP PPP RRR MMM III III III III MMM RRR PPP PPP PPP
       q   w   e   r   t   z   u   i   o   p   ü   +
      PPP RRR MMM III III NNN III MMM RRR PPP PPP PPP
        a   s   d   f   g   h   j   k   l   ö   ä   #
       PPP RRR MMM III III III III MMM RRR PPP PPP PPP
      <   y   x   c   v   b   n   m   ,   .   -
     PPP PPP RRR MMM III III III III MMM RRR PPP

                        TTTTTTT
)");
    EXPECT_EQ(rows(iso, " ", 45), R"(
 ^  1  2  3  4  5  6  7  8  9  0  ß  ´
PPPPPPRRRMMMIIIIIIIIIIIIMMMRRRPPPPPPPPP
      q  w  e  r  t  z  u  i  o  p  ü  +
     PPPRRRMMMIIIIIIIIIIIIMMMRRRPPPPPPPPP
      a  s  d  f  g  h  j  k  l  ö  ä  #
     PPPRRRMMMIIIIIIIIIIIIMMMRRRPPPPPPPPP
     <  y  x  c  v  b  n  m  ,  .  -
    PPPPPPRRRMMMIIIIIIIIIIIIMMMRRRPPP

                 NNNNNNN
)");
    EXPECT_EQ(rows(view("corne", "bepo"), "É", 80), R"(
 b   é   p   o   è               ^   v   d   l   j
PPP NNN MMM III III             III III MMM RRR PPP
 a   u   i   e   ,               c   t   s   r   n   m
PPP RRR MMM III III             III III MMM RRR PPP PPP
 à   y   x   .   k               '   q   g   h   f
PPP RRR MMM III III             III III MMM RRR PPP

                 TTTTTTT
)");
}

TEST_F(KeysOfABoard, DrawsNothingThatItCannotShow) {
    const KeyboardView qwerty = view("full-size-ansi", "qwerty");
    EXPECT_EQ(rows(qwerty, "a", 58), rows(qwerty, "a", 80));
    EXPECT_NE(rows(qwerty, "a", 57), rows(qwerty, "a", 58));
    EXPECT_EQ(rows(qwerty, "a", 44), rows(qwerty, "a", 57));
    EXPECT_EQ(rows(qwerty, "a", 43), "\n");
    EXPECT_NE(rows(qwerty, "a", 80, false), "\n");
    EXPECT_EQ(rows(view("full-size-ansi", "ukrainian"), "а", 80, false), "\n");
}

TEST_F(KeysOfABoard, ShowsOwnWordsOfOneCharacter) {
    const tapcore::Legends own = {{0, {"ä"}}, {1, {"Save"}}, {2, {"日"}}, {3, {}}};
    EXPECT_EQ(rows(view("corne", "qwerty", own), "x", 50), R"(
 q  w  e  r  t           y  u  i  o  p
PPPRRRMMMIIIIII         IIIIIIMMMRRRPPP
 ä  s  d  f  g           h  j  k  l  ;  '
PPPRRRMMMIIIIII         IIIIIIMMMRRRPPPPPP
 z  x  c  v  b           n  m  ,  .  /
PPPNNNMMMIIIIII         IIIIIIMMMRRRPPP

            TTTTTTT
)");
}

TEST_F(KeysOfABoard, NamesAllMissingLettersUpToEight) {
    const KeyboardView qwerty = view("full-size-ansi", "qwerty");
    const Letters nine = {"о", "а", "и", "н", "в", "д", "т", "е", "к"};
    const std::string rest = "\n--layout chooses another layout: one, two";
    EXPECT_EQ(qwerty.remark(nine, "qwerty", {"one", "two"}),
              "qwerty has no key for о, а, и, н, в, д, т, е and 1 more" + rest);
    EXPECT_EQ(qwerty.remark(Letters(nine.begin(), nine.end() - 1), "qwerty", {"one", "two"}),
              "qwerty has no key for о, а, и, н, в, д, т, е" + rest);
}

}  // namespace
}  // namespace tappora

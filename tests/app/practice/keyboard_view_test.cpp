#include "app/practice/keyboard_view.h"

#include <gtest/gtest.h>

#include "core/keyboard/catalog.h"
#include "core/practice/letter_model.h"

namespace tappora {
namespace {

using Letters = std::vector<std::string>;

class KeysOfABoard : public testing::Test {
  protected:
    KeyboardView view(const std::string& board, const std::string& layout) const {
        return KeyboardView(tapcore::Catalog::readBoard(RESOURCES "/Boards/" + board + ".json"),
                            catalog.legends(layout));
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

}  // namespace
}  // namespace tappora

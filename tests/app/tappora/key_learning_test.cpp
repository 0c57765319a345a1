#include "app/tappora/key_learning.h"

#include <gtest/gtest.h>

#include "core/keyboard/catalog.h"

namespace tappora {
namespace {

using Kind = ScreenEvent::Kind;
using tapcore::LearnedKey;

class Learning : public testing::Test {
  protected:
    void type(const std::vector<std::string>& texts) {
        for (const std::string& text : texts) learning.take({Kind::character, text});
    }

    KeyLearning learning{tapcore::Catalog::readBoard(RESOURCES "/Boards/macbook-ansi.json"),
                         {{12, {"q", "Q"}}}};
};

TEST_F(Learning, AsksForEachKeyAloneAndWithShiftFromTheTop) {
    EXPECT_EQ(learning.prompt(), "[1/94] number row, key 1 from the left: press it");
    for (int step = 0; step < 27; ++step) learning.take({Kind::enter, {}});
    EXPECT_EQ(learning.prompt(), "[28/94] upper row, key 1 from the left (q): press it with shift");
}

TEST_F(Learning, GoesBackToCorrectAndForgetsWhatIsSkipped) {
    type({"§", "x"});
    learning.take({Kind::erase, {}});
    type({"°", "1", "!"});
    learning.take({Kind::erase, {}});
    learning.take({Kind::enter, {}});
    learning.take({Kind::leave, {}});
    EXPECT_TRUE(learning.isOver());
    type({"2"});
    EXPECT_EQ(learning.learned(),
              (std::map<tapcore::KeyCode, LearnedKey>{{50, {"§", "°"}}, {18, {"1", ""}}}));
}

TEST_F(Learning, KeepsNothingWhenItIsBrokenOff) {
    for (const Kind kind : {Kind::end, Kind::gone}) {
        KeyLearning broken(tapcore::Catalog::readBoard(RESOURCES "/Boards/planck.json"), {});
        broken.take({Kind::character, "x"});
        broken.take({kind, {}});
        EXPECT_TRUE(broken.isOver() && broken.isStopped());
        EXPECT_TRUE(broken.learned().empty());
    }
    type({"x"});
    learning.take({Kind::leave, {}});
    EXPECT_FALSE(learning.isStopped());
    EXPECT_EQ(learning.learned().size(), 1U);
}

TEST_F(Learning, IsOverAfterTheLastKey) {
    type(std::vector<std::string>(94, "a"));
    EXPECT_TRUE(learning.isOver());
    EXPECT_EQ(learning.learned().size(), 47U);
}

}  // namespace
}  // namespace tappora

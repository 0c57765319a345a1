#include "app/common/terminal/key_decoder.h"

#include <gtest/gtest.h>

#include <clocale>
#include <map>

namespace tappora {
namespace {

using Kind = ScreenEvent::Kind;

/// Events as one text: characters as they are, the others in brackets.
std::string shown(const std::vector<ScreenEvent>& events) {
    const std::map<Kind, std::string> names = {
        {Kind::erase, "[erase]"}, {Kind::enter, "[enter]"},  {Kind::leave, "[leave]"},
        {Kind::focusIn, "[in]"},  {Kind::focusOut, "[out]"}, {Kind::suspend, "[suspend]"},
    };
    std::string text;
    for (const ScreenEvent& event : events)
        text += event.kind == Kind::character ? "(" + event.text + ")" : names.at(event.kind);
    return text;
}

class Decoding : public testing::Test {
  protected:
    void SetUp() override { ASSERT_NE(std::setlocale(LC_CTYPE, "C.UTF-8"), nullptr); }
    void TearDown() override { std::setlocale(LC_CTYPE, "C"); }
};

TEST_F(Decoding, GivesTheSameWhateverPiecesBytesComeIn) {
    const struct {
        const char* bytes;
        const char* events;
    } cases[] = {
        {"ab c", "(a)(b)( )(c)"},
        {"\033[[Ax", "(x)"},
        {"\033[\x03", "[leave]"},
        {"\033O\x03", "[leave]"},
        {"é€😀", "(é)(€)(😀)"},
        {"\x7F\b\r\n\t\x01\x1A", "[erase][erase][enter][enter][suspend]"},
        {"\x03"
         "a\x04",
         "[leave](a)[leave]"},
        {"a\xFF"
         "b",
         "(a)(\uFFFD)(b)"},
        {"\xC3"
         "a\xE2\x82z",
         "(\uFFFD)(a)(\uFFFD)(z)"},
        {"\033[A\033OB\033[1;5Cx", "(x)"},
        {"\033xy\033éz", "(y)(z)"},
        {"\033\033[Ax", "[leave](x)"},
        {"\033[Oa\033[I\033[1Ob", "[out](a)[in](b)"},
    };
    for (const auto& [bytes, events] : cases) {
        EXPECT_EQ(shown(KeyDecoder().decode(bytes, 0)), events);
        KeyDecoder slow;
        std::string oneByOne;
        for (const char byte : std::string_view(bytes)) oneByOne += shown(slow.decode({&byte, 1}, 0));
        EXPECT_EQ(oneByOne, events);
    }
}

TEST_F(Decoding, JoinsMarksThatComeWithTheirLetter) {
    EXPECT_EQ(shown(KeyDecoder().decode("e\u0301t", 0)), "(e\u0301)(t)");
}

TEST_F(Decoding, TellsTheEscapeKeyByTheTimeAfterIt) {
    KeyDecoder decoder;
    EXPECT_EQ(shown(decoder.decode("a\033", 100)), "(a)");
    EXPECT_TRUE(decoder.isWaiting());
    EXPECT_EQ(shown(decoder.settle(124)), "");
    EXPECT_EQ(shown(decoder.settle(125)), "[leave]");
    EXPECT_FALSE(decoder.isWaiting());
    decoder.decode("\033", 200);
    EXPECT_EQ(shown(decoder.decode("[b", 300)), "[leave]([)(b)");
}

TEST_F(Decoding, TakesTextInTheLocalesCharacterSet) {
    ASSERT_NE(std::setlocale(LC_CTYPE, "C"), nullptr);
    EXPECT_EQ(shown(KeyDecoder().decode("a\xE9", 0)), "(a)(\uFFFD)");
}

}  // namespace
}  // namespace tappora

#include "core/keyboard/board.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/foundation/json_fields.h"

namespace tapcore {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

constexpr std::string_view small = R"({
  "id": "small", "name": "Small", "maker": "Tester", "geometry": "exact", "notes": null, "shape": 4,
  "keys": [
    {"id": "a", "keyCode": 0.0, "x": 1, "y": 2.5, "hand": "left", "finger": "pinky", "row": "home"},
    {"id": "return", "keyCode": 36, "x": 3, "y": 1, "w": 1.25, "h": 2, "r": 15, "rx": 3, "ry": 1,
     "second": {"x": 2.75, "y": 1, "w": 1.5, "h": 1},
     "hand": "right", "finger": "thumb", "row": "thumb", "home": true}
  ]
})";

/// The small board with one piece of its text replaced.
std::string smallWith(std::string_view piece, std::string_view replacement) {
    std::string text(small);
    return text.replace(text.find(piece), piece.size(), replacement);
}

std::string whyRefused(std::string_view text) {
    try {
        Board::parse(text);
    } catch (const JsonError& error) {
        return error.what();
    }
    return "";
}

Board board(std::vector<Board::Key> keys) { return {.id = "b", .keys = std::move(keys)}; }

TEST(Board, DecodesWithDefaultsAndEncodesThemInFull) {
    const Board decoded = Board::parse(small);
    ASSERT_EQ(decoded.keys.size(), 2u);
    EXPECT_EQ(decoded.keys[0], (Board::Key{.id = "a",
                                           .keyCode = KeyCode{0},
                                           .x = 1,
                                           .y = 2.5,
                                           .hand = Board::Hand::left,
                                           .finger = Board::Finger::pinky,
                                           .row = Board::Row::home}));
    EXPECT_EQ(decoded.keys[1].second, (Board::Rect{2.75, 1, 1.5, 1}));
    EXPECT_EQ(decoded.notes, std::nullopt);
    EXPECT_EQ(decoded.text(),
              R"({
  "geometry": "exact",
  "id": "small",
  "keys": [
    {"finger":"pinky","h":1.0,"hand":"left","home":false,"id":"a","keyCode":0,"r":0.0,"row":"home","w":1.0,"x":1.0,"y":2.5},
    {"finger":"thumb","h":2.0,"hand":"right","home":true,"id":"return","keyCode":36,"r":15.0,"row":"thumb","rx":3.0,"ry":1.0,)"
              R"("second":{"h":1.0,"w":1.5,"x":2.75,"y":1.0},"w":1.25,"x":3.0,"y":1.0}
  ],
  "maker": "Tester",
  "name": "Small"
}
)");
    EXPECT_EQ(Board::parse(decoded.text()), decoded);
}

TEST(Board, NamesThePlaceOfWhatItCannotDecode) {
    const struct {
        std::string text, why;
    } cases[] = {
        {"", "parse error at line 1, column 1: "},
        {"[]", "the document: not an object"},
        {smallWith("\"maker\": \"Tester\", ", ""), "the document: \"maker\" is missing"},
        {smallWith("\"Small\"", "null"), "the document: \"name\" is missing"},
        {smallWith("\"exact\"", "\"Exact\""), "geometry: unknown word \"Exact\""},
        {smallWith("null", "true"), "notes: not a string"},
        {smallWith("\"x\": 1", "\"x\": \"1\""), "keys[0].x: not a number"},
        {smallWith("\"x\": 1", "\"x\": NaN"), "parse error at line 4, column 38: "},
        {smallWith("\"x\": 1", "\"x\": 1e400"), "number overflow parsing '1e400'"},
        {smallWith("36", "36.5"), "keys[1].keyCode: not a 64-bit integer"},
        {smallWith("36", "65536"), "keys[1].keyCode: not a key code"},
        {smallWith("\"y\": 1, \"w\": 1.5", "\"w\": 1.5"), "keys[1].second: \"y\" is missing"},
        {smallWith("\"thumb\"", "\"" + std::string(300, 't') + "\""),
         "keys[1].finger: unknown word \"" + std::string(200, 't') + "…\""},
        {smallWith("true", "1"), "keys[1].home: not true or false"},
    };
    for (const auto& [text, why] : cases) EXPECT_THAT(whyRefused(text), StartsWith(why)) << text;
}

TEST(Board, RefusesDeepNestingAtItsPlace) {
    const std::string deep = smallWith("4", "\n" + std::string(1'000'000, '['));
    EXPECT_EQ(whyRefused(deep), "nested more than 500 deep at line 3, column 500");
    EXPECT_EQ(whyRefused(smallWith("4", "\"\\\"" + std::string(1000, '[') + "\"")), "");
}

TEST(Board, ListsProblemsKeyByKeyInTheOrderOfTheChecks) {
    EXPECT_THAT(board({}).problems(), ElementsAre("b: no keys"));
    EXPECT_THAT(board({{.id = "a", .keyCode = KeyCode{130}},
                       {.id = "a", .keyCode = KeyCode{130}, .w = 0, .r = 15, .rx = 1.0},
                       {.id = "c", .keyCode = KeyCode{130}, .h = -1, .r = 15, .rx = 1.0, .ry = 0.0},
                       {.id = "d"},
                       {.id = "e", .keyCode = KeyCode{127}}})
                    .problems(),
                ElementsAre("b: a sends 130, beyond what is counted", "b: key id a is used twice",
                            "b: a sends 130, beyond what is counted",
                            "b: key code 130 is claimed by both a and a", "b: a has no size",
                            "b: a is rotated about no point", "b: c sends 130, beyond what is counted",
                            "b: key code 130 is claimed by both a and c", "b: c has no size"));
}

TEST(Board, TurnsKeysClockwiseAboutTheirCentre) {
    // A quarter turn about the origin takes the key right of it below it.
    const Board::Key turned{.id = "a", .x = 2, .y = 0, .w = 4, .h = 2, .r = 90, .rx = 0.0, .ry = 0.0};
    EXPECT_NEAR(turned.center().x, -1, 1e-12);
    EXPECT_NEAR(turned.center().y, 4, 1e-12);
    const Board::Key aboutNothing{.id = "a", .x = 2, .y = 0, .w = 4, .h = 2, .r = 90, .rx = 0.0};
    EXPECT_EQ(aboutNothing.center(), (Board::Point{4, 1}));
}

TEST(Board, BoundsHoldTurnedCornersAndSecondRectangles) {
    EXPECT_EQ(board({}).bounds(), Board::Rect{});
    const Board turned = board({{.id = "a",
                                 .x = 2,
                                 .w = 4,
                                 .h = 2,
                                 .r = 90,
                                 .rx = 0.0,
                                 .ry = 0.0,
                                 .second = Board::Rect{2, 2, 1, 3}}});
    const Board::Rect bounds = turned.bounds();
    EXPECT_NEAR(bounds.x, -5, 1e-12);
    EXPECT_NEAR(bounds.y, 2, 1e-12);
    EXPECT_NEAR(bounds.w, 5, 1e-12);
    EXPECT_NEAR(bounds.h, 4, 1e-12);
}

TEST(Board, FindsTheFirstKeyOfACode) {
    const Board twice = board(
        {{.id = "none"}, {.id = "first", .keyCode = KeyCode{0}}, {.id = "second", .keyCode = KeyCode{0}}});
    EXPECT_EQ(twice.key(0), &twice.keys[1]);
    EXPECT_EQ(twice.key(1), nullptr);
    EXPECT_THAT(twice.keyCodes(), ElementsAre(0));
}

}  // namespace
}  // namespace tapcore

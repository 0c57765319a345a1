#include "core/keyboard/board.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/foundation/json_fields.h"
#include "tests/support/message_of.h"

namespace tapcore {
namespace {

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
    return messageOf<JsonError>([&] { return Board::parse(text); });
}

Board board(std::vector<Board::Key> keys) { return {.id = "b", .keys = std::move(keys)}; }

TEST(Board, DecodesWithDefaultsAndEncodesThemInFull) {
    const Board decoded = Board::parse(small);
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
        {smallWith("\"maker\": \"Tester\", ", ""), "the document: \"maker\" is missing"},
        {smallWith("\"exact\"", "\"Exact\""), "geometry: unknown word \"Exact\""},
        {smallWith("\"x\": 1", "\"x\": \"1\""), "keys[0].x: not a number: \"1\""},
        {smallWith("\"x\": 1", "\"x\": NaN"), "parse error at line 4, column 38: "},
        {smallWith("36", "65536"), "keys[1].keyCode: not a key code"},
        {smallWith("\"y\": 1, \"w\": 1.5", "\"w\": 1.5"), "keys[1].second: \"y\" is missing"},
        {smallWith("\"thumb\"", "\"" + std::string(300, 't') + "\""),
         "keys[1].finger: unknown word \"" + std::string(200, 't') + "…\""},
        {smallWith("true", "1"), "keys[1].home: not true or false: 1"},
        {smallWith("4", "\n" + std::string(1'000'000, '[')),
         "nested more than 500 deep at line 3, column 500"},
        {smallWith("4", "\"\\\"" + std::string(1000, '[') + "\""), ""},
    };
    for (const auto& [text, why] : cases) EXPECT_THAT(whyRefused(text), StartsWith(why));
}

TEST(Board, TurnsKeysClockwiseAndHoldsAllOfThemInItsBounds) {
    EXPECT_EQ(board({}).bounds(), Board::Rect{});
    // A quarter turn about the origin takes what is right of it below it.
    Board::Key key{.id = "a", .x = 2, .y = 0, .w = 4, .h = 2, .r = 90, .rx = 0.0};
    EXPECT_EQ(key.center(), (Board::Point{4, 1})) << "turned about no point";
    key.ry = 0.0;
    key.second = Board::Rect{2, 2, 1, 3};
    EXPECT_NEAR(key.center().x, -1, 1e-12);
    EXPECT_NEAR(key.center().y, 4, 1e-12);
    const auto [x, y, w, h] = board({key}).bounds();
    for (const auto& [value, expected] : {std::pair{x, -5.0}, {y, 2.0}, {w, 5.0}, {h, 4.0}})
        EXPECT_NEAR(value, expected, 1e-12);
}

}  // namespace
}  // namespace tapcore

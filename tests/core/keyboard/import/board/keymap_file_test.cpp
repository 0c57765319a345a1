#include "core/keyboard/import/board/keymap_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/foundation/file_io.h"
#include "core/keyboard/import/board/board_import.h"
#include "core/keyboard/import/board/firmware_keycodes.h"
#include "tests/support/message_of.h"

namespace tapcore {
namespace {

using testing::ElementsAre;

// Two halves of two keys and a thumb key each, as QMK and as VIA describe them.
constexpr std::string_view firmware =
    R"({"layouts": {"LAYOUT_other": {"layout": [{"x": 0, "y": 0}]}, "LAYOUT": {"layout": [
    {"matrix": [0, 0], "x": 0, "y": 0}, {"matrix": [0, 1], "x": 1, "y": 0},
    {"matrix": [2, 1], "x": 4, "y": 0}, {"matrix": [2, 0], "x": 5, "y": 0},
    {"matrix": [1, 1], "x": 1, "y": 1}, {"matrix": [3, 1], "x": 4, "y": 1}]}}})";
constexpr std::string_view via = R"({"name": "Six", "matrix": {"rows": 4, "cols": 2}, "layouts": {"keymap": [
    ["0,0", "0,1", {"x": 2}, "2,1", "2,0"], [{"x": 1}, "1,1", {"x": 2}, "3,1"]]}})";

// The base layers of keymaps for it, which the fuzz target begins with too.
std::string seed(std::string_view name) {
    return readFile(std::filesystem::path(TEST_DATA) / "../../fuzz/seeds/keymap" / name).text;
}
const std::string keymapJson = seed("keymap.json"), keymapSource = seed("keymap.c");
const std::string savedByVia = seed("via.json"), savedByVial = seed("saved.vil");

std::string many(std::string_view text, std::size_t times) {
    std::string all;
    while (times-- > 0) all += text;
    return all;
}

BoardImport imported(std::string_view board, std::string_view keymap) {
    return importBoard(board, {}, {.keymap = readKeymap(keymap)});
}

TEST(Keymap, OfEachKindTellsWhatTheKeysSend) {
    const struct {
        std::string_view board, keymap;
    } cases[] = {{firmware, keymapJson},  {firmware, keymapSource}, {firmware, savedByVia},
                 {firmware, savedByVial}, {via, savedByVia},        {via, savedByVial}};
    for (const auto& [board, keymap] : cases) {
        const bool namesLayout = board == via || keymap == keymapJson || keymap == keymapSource;
        const BoardImport six =
            importBoard(board, {},
                        {.layout = namesLayout ? std::nullopt : std::optional<std::string>("LAYOUT"),
                         .keymap = readKeymap(keymap)});
        std::vector<std::optional<KeyCode>> codes;
        for (const Board::Key& key : six.board.keys) codes.push_back(key.keyCode);
        EXPECT_THAT(codes, ElementsAre(12, 0, 35, 41, 49, std::nullopt)) << keymap;
        EXPECT_THAT(six.guessed, ElementsAre());
        ASSERT_EQ(six.withoutCode.size(), 1u);
        EXPECT_THAT(six.withoutCode[0], testing::HasSubstr(": MO("));
    }
}

TEST(Keymap, IsRefusedSoonWhateverItRepeats) {
    const std::string brackets = many("(", 100'000) + many(")", 100'000);
    for (const std::string& keymap : {many("enum{", 80'000), many("keymaps[", 80'000),
                                      "#define X " + brackets + "\nenum{" + many("a=X,", 80'000) + "}"})
        EXPECT_EQ(messageOf<KeymapError>([&] { imported(firmware, keymap); }),
                  "not a keymap: neither JSON nor C with an array keymaps");
    EXPECT_EQ(messageOf<KeymapError>([&] { imported(firmware, many(" ", (1 << 20) + 1)); }),
              "larger than 1 MiB, which no keymap is");
}

TEST(Keymap, InCHasTheBaseLayerThatTheCompilerWouldFind) {
    const std::string layers = " keymaps[] = {[_FN] = LAYOUT(KC_1, KC_2), [_BASE] = LAYOUT(KC_A, KC_B)};";
    const std::string cases[] = {
        "enum layers { _FN = 1, _BASE = 0 };" + layers,
        "enum { _UP = -1, _BASE, _FN };" + layers,
        "enum { _FN = 0x1u }; enum { _BASE = (0) };" + layers,
        "#define NONE (0)\n#define _BASE NONE\n#define _FN 1\n" + layers,
        "#define FIRST 0\nenum layers : char { _BASE = FIRST, _FN };" + layers,
        "int mykeymaps[] = {1}; f(keymaps[0]); enum { _BASE, _FN };" + layers,
        "keymaps[] = {[1] = LAYOUT(KC_1, KC_2), LAYOUT(KC_3, KC_4), [0] = LAYOUT(KC_A, KC_B)};",
        "#define _ROW_ KC_A, \\\n  KC_B\nkeymaps[] = {LAYOUT(_ROW_)};",
        "#define A (KC_A)\r\n#define _ROW_ \\\r\n A, KC_B\r\nkeymaps[] = {LAYOUT(_ROW_)};",
        "#define wrapped(...) LAYOUT(__VA_ARGS__)\nkeymaps[] = {wrapped(KC_A, KC_B)};",
        "#error don't\nkeymaps[] = {LAYOUT(KC_A, KC_B)};",
    };
    for (const std::string& source : cases) {
        const Keymap keymap = readKeymap(source);
        EXPECT_EQ(keymap.layout, "LAYOUT") << source;
        EXPECT_THAT(keymap.rows, ElementsAre(ElementsAre("KC_A", "KC_B"))) << source;
    }
}

TEST(Keymap, IsForALayoutOrAnAliasOfIt) {
    const std::string board = R"({"layout_aliases": {"LAYOUT_old": "LAYOUT_a"}, "layouts": {
        "LAYOUT_a": {"layout": [{"x": 0, "y": 0}]}, "LAYOUT_b": {"layout": [{"x": 0, "y": 0}]}}})";
    const auto why = [&](const std::string& layout) {
        const std::string keymap = R"({"layers": [["KC_A"]], "layout": ")" + layout + "\"}";
        return messageOf<KeymapError>(
            [&] { importBoard(board, {}, {.layout = "LAYOUT_a", .keymap = readKeymap(keymap)}); });
    };
    EXPECT_EQ(why("LAYOUT_a"), "");
    EXPECT_EQ(why("LAYOUT_old"), "");
    for (const std::string other : {"LAYOUT_b", "LAYOUT"})
        EXPECT_EQ(why(other), "belongs to another layout: " + other +
                                  ", but LAYOUT_a was read; choose the layout with --layout");
    EXPECT_EQ(
        imported(R"({"layouts": {"LAYOUT_a": {"layout": [{"x": 0, "y": 0}]}}})", "keymaps[] = {LAYOUT(KC_A)}")
            .board.keys[0]
            .keyCode,
        0);
}

TEST(Keymap, CannotReachPastTheMatrix) {
    for (const std::string place : {"[9223372036854775807, 0]", "[0, 65536]"})
        EXPECT_EQ(messageOf<std::exception>([&] {
                      imported(
                          R"({"layouts": {"L": {"layout": [{"x": 0, "y": 0, "matrix": )" + place + "}]}}}",
                          savedByVia);
                  }).substr(0, 25),
                  "layouts.L.layout[0].matri");
    for (const std::string_view board :
         {R"({"matrix": {"cols": 2}, "layouts": {"keymap": [["9223372036854775807,1"]]}})",
          R"({"matrix": {"cols": 9223372036854775807}, "layouts": {"keymap": [["9,1"]]}})"})
        EXPECT_NE(messageOf<KeymapError>([&] { imported(board, R"({"layers": [[]]})"); }), "") << board;
}

TEST(Keymap, OfAnIsoBoardHasItsTwoKeysWhereMacsHaveThem) {
    const BoardImport iso =
        importBoard(R"({"layouts": {"L": {"layout": [{"x": 0, "y": 0}, {"x": 1, "y": 0}]}}})", {},
                    {.keymap = readKeymap(R"({"layout": "L", "layers": [["KC_GRV", "KC_NUBS"]]})")});
    EXPECT_EQ(iso.board.keys[0].keyCode, 10);
    EXPECT_EQ(iso.board.keys[1].keyCode, 50);
}

TEST(FirmwareKeyCode, IsWhatATapSends) {
    const struct {
        std::string_view word;
        std::optional<KeyCode> code;
    } cases[] = {
        {"KC_A", 0},
        {"KC_0", 29},
        {"KC_F12", 111},
        {"KC_ENTER", 36},
        {"KC_BSPC", 51},
        {"QK_GESC", 53},
        {"MT(MOD_LCTL, KC_B)", 11},
        {"LCTL_T(KC_ESC)", 53},
        {"LT3(KC_TAB)", 48},
        {"OSM(MOD_RSFT)", 60},
        {"SC_LSPO", 56},
        {"KC_PAST", 67},
        {"KC_TRNS", {}},
        {"XXXXXXX", {}},
        {"S(KC_1)", {}},
        {"LALT(KC_TAB)", {}},
        {"MO(1)", {}},
        {"TO(KC_A)", {}},
        {"KC_", {}},
        {"", {}},
        {"KC_ A", {}},
        {"LT(1, S(KC_A))", {}},
        {"KC_A)", {}},
    };
    for (const auto& [word, code] : cases) EXPECT_EQ(firmwareKeyCode(word), code) << word;
}

}  // namespace
}  // namespace tapcore

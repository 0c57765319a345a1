#include "core/keyboard/import/board/keymap_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

constexpr std::string_view keymapJson =
    R"keymap({"version": 1, "keyboard": "six", "keymap": "mine", "layout": "LAYOUT",
    "layers": [["KC_Q", "LSFT_T(KC_A)", "KC_P", "KC_SCLN", "LT(1, KC_SPC)", "MO(1)"], ["KC_1"]]
})keymap";
constexpr std::string_view keymapSource = R"keymap(#include QMK_KEYBOARD_H
enum layers { _BASE, _RAISE };
#define HOME_A LSFT_T(KC_A)  // a home row modifier
const uint16_t PROGMEM keymaps[][MATRIX_ROWS][MATRIX_COLS] = {
    /* | 1 | , ) } */
    [_RAISE] = LAYOUT(KC_1, KC_2, KC_3, KC_4, KC_5, KC_6),
    [_BASE] = LAYOUT(
        KC_Q, HOME_A,   KC_P, KC_SCLN, // ,
        LT(_RAISE, KC_SPC),   MO(_RAISE)
    ),
};)keymap";
constexpr std::string_view savedByVia =
    R"keymap({"name": "Six", "vendorProductId": 1, "macros": [""], "layers": [
    ["KC_Q", "LSFT_T(KC_A)", "KC_NO", "LT(1,KC_SPC)", "KC_SCLN", "KC_P", "KC_NO", "MO(1)"], []]
})keymap";
constexpr std::string_view savedByVial = R"keymap({"version": 1, "uid": 17340026170389061234, "layout": [
    [["KC_Q", "LSFT_T(KC_A)"], [-1, "LT1(KC_SPC)"], ["KC_SCLN", "KC_P"], [-1, "MO(1)"]], [[]]], "encoder_layout": []
})keymap";

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

TEST(Keymap, SaysWhyItDoesNotBelongToTheBoard) {
    const struct {
        std::string_view board;
        std::string keymap;
        std::string_view why;
    } cases[] = {
        {firmware, R"({"layout": "LAYOUT", "layers": [["KC_A"]]})",
         "belongs to another layout: 1 key, but LAYOUT has 6"},
        {via, std::string(keymapJson),
         "goes with QMK's info.json or keyboard.json, which tells the order of its keys"},
        {"[['A']]", std::string(savedByVial),
         "goes with a VIA definition or QMK's info.json, which tell the places in the matrix"},
        {via, R"({"layers": [["KC_A"]]})", "belongs to another board: 1 key, which are no rows of 2"},
        {via, std::string(firmware),
         "the document: this describes a board; a keymap has \"layers\", or is a keymap.c or a .vil file"},
        {via, "[]", "the document: not a keymap"},
        {via, R"({"layers": []})", "layers: has too few elements"},
        {via, R"({"layers": [[true]]})", "layers[0][0]: not a string"},
        {via, "int main() {}", "not a keymap: neither JSON nor C with an array keymaps"},
        {via, "keymaps[] = {[0] = LAYOUT(KC_A", "a bracket of the keymap is not closed"},
        {via, R"({"layout": [[]]})", "belongs to another board: it has none of the keys of this one"},
        {firmware, "keymaps[] = {[_FN] = LAYOUT(KC_1)}",
         "cannot tell which layer is the base; save the keymap as keymap.json"},
        {firmware, "#ifdef A\n#define B 0\n#else\n#define B 1\n#endif\nkeymaps[] = {[B] = LAYOUT(KC_1)}",
         "cannot tell which layer is the base; save the keymap as keymap.json"},
        {firmware, "enum {\n#ifdef A\n_FN,\n#endif\n_BASE};keymaps[] = {[_BASE] = LAYOUT(KC_1)}",
         "cannot tell which layer is the base; save the keymap as keymap.json"},
        {firmware, "keymaps[] = {\n#if A\n[0] = LAYOUT(KC_1)\n#else\n[0] = LAYOUT(KC_2)\n#endif\n};",
         "has conditions, such as #if; save the keymap as keymap.json"},
        {firmware, "#if A\nkeymaps[] = {LAYOUT(KC_1)};\n#else\nkeymaps[] = {LAYOUT(KC_2)};\n#endif",
         "has the array keymaps twice; save the keymap as keymap.json"},
        {firmware, "#define B 0\nkeymaps[] = {[0] = LAYOUT(KC_1), [B] = LAYOUT(KC_2)}",
         "has layer 0 twice; save the keymap as keymap.json"},
        {firmware, "keymaps[] = {LAYOUT_split(KC_A)}",
         "belongs to another layout: LAYOUT_split, but LAYOUT was read; choose the layout with --layout"},
        {firmware, many("enum{", 80'000), "not a keymap: neither JSON nor C with an array keymaps"},
        {firmware,
         "#define X " + many("(", 100'000) + many(")", 100'000) + "\nenum{" + many("a=X,", 80'000) + "}",
         "not a keymap: neither JSON nor C with an array keymaps"},
        {firmware, many("keymaps[", 80'000), "not a keymap: neither JSON nor C with an array keymaps"},
        {firmware, many(" ", (1 << 20) + 1), "larger than 1 MiB, which no keymap is"},
        {firmware, "#define A A,A,A,A,A,A,A,A\nkeymaps[] = {LAYOUT(A)}",
         "its definitions make more than 1 MiB of keys"},
        {firmware, "int mykeymaps[] = {1}; keymaps = {1}; extern keymaps[];",
         "not a keymap: neither JSON nor C with an array keymaps"},
        {via, "keymaps[] = {1,2,3,4,5,6,7,8,9,1,2,3,4,5,6,7,8,9,1,2,3,4,5,6,7,8,9,1,2,3,4,5,6}",
         "more than 32 layers, which the firmware cannot have"},
        {via, "keymaps[] = {}", "the array keymaps is empty"},
    };
    for (const auto& [board, keymap, why] : cases)
        EXPECT_EQ(messageOf<KeymapError>([&] { imported(board, keymap); }), why) << keymap.substr(0, 200);
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

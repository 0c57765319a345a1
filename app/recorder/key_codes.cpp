#include "app/recorder/key_codes.h"

#include <libevdev/libevdev.h>
#include <linux/input-event-codes.h>

#include <array>
#include <cstddef>
#include <string_view>

namespace tappora {
namespace {

using tapcore::Modifiers;

struct Pair {
    LinuxKey key;
    std::uint8_t mac;
};

constexpr std::uint8_t leftOfOne = 50;
constexpr std::uint8_t besideTheShift = 10;

// clang-format off
constexpr Pair pairs[] = {
    // The letters, by rows.
    {KEY_Q, 12}, {KEY_W, 13}, {KEY_E, 14}, {KEY_R, 15}, {KEY_T, 17}, {KEY_Y, 16}, {KEY_U, 32}, {KEY_I, 34},
    {KEY_O, 31}, {KEY_P, 35}, {KEY_A, 0}, {KEY_S, 1}, {KEY_D, 2}, {KEY_F, 3}, {KEY_G, 5}, {KEY_H, 4},
    {KEY_J, 38}, {KEY_K, 40}, {KEY_L, 37}, {KEY_Z, 6}, {KEY_X, 7}, {KEY_C, 8}, {KEY_V, 9}, {KEY_B, 11},
    {KEY_N, 45}, {KEY_M, 46},
    // The digits and what is around the letters.
    {KEY_1, 18}, {KEY_2, 19}, {KEY_3, 20}, {KEY_4, 21}, {KEY_5, 23}, {KEY_6, 22}, {KEY_7, 26}, {KEY_8, 28},
    {KEY_9, 25}, {KEY_0, 29}, {KEY_MINUS, 27}, {KEY_EQUAL, 24}, {KEY_GRAVE, leftOfOne},
    {KEY_102ND, besideTheShift}, {KEY_LEFTBRACE, 33}, {KEY_RIGHTBRACE, 30}, {KEY_BACKSLASH, 42},
    {KEY_SEMICOLON, 41}, {KEY_APOSTROPHE, 39}, {KEY_COMMA, 43}, {KEY_DOT, 47}, {KEY_SLASH, 44},
    {KEY_ENTER, 36}, {KEY_TAB, 48}, {KEY_SPACE, 49}, {KEY_BACKSPACE, 51}, {KEY_ESC, 53},
    // The modifiers.
    {KEY_LEFTMETA, 55}, {KEY_RIGHTMETA, 54}, {KEY_LEFTSHIFT, 56}, {KEY_RIGHTSHIFT, 60}, {KEY_LEFTALT, 58},
    {KEY_RIGHTALT, 61}, {KEY_LEFTCTRL, 59}, {KEY_RIGHTCTRL, 62}, {KEY_CAPSLOCK, 57}, {KEY_FN, 63},
    // Moving about. Insert is where Apple's boards have Help; the menu key is code 110.
    {KEY_LEFT, 123}, {KEY_RIGHT, 124}, {KEY_DOWN, 125}, {KEY_UP, 126}, {KEY_HOME, 115}, {KEY_END, 119},
    {KEY_PAGEUP, 116}, {KEY_PAGEDOWN, 121}, {KEY_DELETE, 117}, {KEY_INSERT, 114}, {KEY_HELP, 114},
    {KEY_COMPOSE, 110},
    // The function keys. Print Screen, Scroll Lock and Pause are where Apple's boards have F13 to F15.
    {KEY_F1, 122}, {KEY_F2, 120}, {KEY_F3, 99}, {KEY_F4, 118}, {KEY_F5, 96}, {KEY_F6, 97}, {KEY_F7, 98},
    {KEY_F8, 100}, {KEY_F9, 101}, {KEY_F10, 109}, {KEY_F11, 103}, {KEY_F12, 111}, {KEY_F13, 105},
    {KEY_F14, 107}, {KEY_F15, 113}, {KEY_F16, 106}, {KEY_F17, 64}, {KEY_F18, 79}, {KEY_F19, 80},
    {KEY_F20, 90}, {KEY_SYSRQ, 105}, {KEY_SCROLLLOCK, 107}, {KEY_PAUSE, 113},
    // The keypad. Num Lock is where Apple's boards have Clear.
    {KEY_KP0, 82}, {KEY_KP1, 83}, {KEY_KP2, 84}, {KEY_KP3, 85}, {KEY_KP4, 86}, {KEY_KP5, 87}, {KEY_KP6, 88},
    {KEY_KP7, 89}, {KEY_KP8, 91}, {KEY_KP9, 92}, {KEY_KPDOT, 65}, {KEY_KPENTER, 76}, {KEY_KPPLUS, 69},
    {KEY_KPMINUS, 78}, {KEY_KPASTERISK, 67}, {KEY_KPSLASH, 75}, {KEY_KPEQUAL, 81}, {KEY_NUMLOCK, 71},
    // Japanese boards: beside the space bar Apple's have 英数 (Hanja to Linux) and かな (Hangeul), those of PCs
    // 無変換 and 変換, and one more key for かな.
    {KEY_YEN, 93}, {KEY_RO, 94}, {KEY_KPCOMMA, 95}, {KEY_KPJPCOMMA, 95}, {KEY_HANJA, 102},
    {KEY_MUHENKAN, 102}, {KEY_HANGEUL, 104}, {KEY_HENKAN, 104}, {KEY_KATAKANAHIRAGANA, 104},
    {KEY_HIRAGANA, 104}, {KEY_KATAKANA, 104},
    // The volume.
    {KEY_VOLUMEUP, 72}, {KEY_VOLUMEDOWN, 73}, {KEY_MUTE, 74},
};
// clang-format on

constexpr std::uint8_t none = 0xFF;

consteval auto byLinuxKey() {
    std::array<std::uint8_t, KEY_FN + 1> table{};
    table.fill(none);
    for (const Pair& pair : pairs) {
        if (table[pair.key] != none || pair.mac >= 128)
            throw "a key is in the table twice, or cannot be counted";
        table[pair.key] = pair.mac;
    }
    return table;
}
constexpr auto table = byLinuxKey();

std::uint8_t onIsoBoards(std::uint8_t mac) {
    if (mac == leftOfOne) return besideTheShift;
    return mac == besideTheShift ? leftOfOne : mac;
}

}  // namespace

std::optional<tapcore::KeyCode> macKeyCode(LinuxKey key, BoardShape shape) {
    const std::uint8_t mac = key < table.size() ? table[key] : none;
    if (mac == none) return std::nullopt;
    return shape == BoardShape::iso ? onIsoBoards(mac) : mac;
}

Modifiers modifierOf(LinuxKey key) {
    switch (key) {
        case KEY_LEFTCTRL:
        case KEY_RIGHTCTRL:
            return Modifiers::control;
        case KEY_LEFTALT:
        case KEY_RIGHTALT:
            return Modifiers::option;
        case KEY_LEFTSHIFT:
        case KEY_RIGHTSHIFT:
            return Modifiers::shift;
        case KEY_LEFTMETA:
        case KEY_RIGHTMETA:
            return Modifiers::command;
        case KEY_FN:
            return Modifiers::function;
        default:
            return {};
    }
}

bool isModifierKey(LinuxKey key) { return key == KEY_CAPSLOCK || !modifierOf(key).isEmpty(); }

bool isMouseButton(LinuxKey code) { return code >= BTN_MOUSE && code < BTN_JOYSTICK; }

std::optional<std::string> linuxKeyName(LinuxKey code) {
    const char* name = libevdev_event_code_get_name(EV_KEY, code);
    if (!name || !std::string_view(name).starts_with("KEY_")) return std::nullopt;
    return name;
}

}  // namespace tappora

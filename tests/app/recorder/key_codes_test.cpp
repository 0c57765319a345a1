#include "app/recorder/key_codes.h"

#include <gmock/gmock.h>
#include <linux/input-event-codes.h>

#include <map>
#include <set>
#include <string>

namespace tappora {
namespace {

/// What the keys of an Apple board for English print, by macOS key code; blank where it is no single
/// character.
constexpr std::string_view printed = "ASDFHGZXCV BQWERYT123465=97-80]OU[IP LJ'K;\\,/NM.  `";

TEST(KeyCodes, GiveTheKeyThatPrintsWhatLinuxNamesItBy) {
    const std::map<std::string, char> names = {{"MINUS", '-'},       {"EQUAL", '='},      {"LEFTBRACE", '['},
                                               {"RIGHTBRACE", ']'},  {"BACKSLASH", '\\'}, {"SEMICOLON", ';'},
                                               {"APOSTROPHE", '\''}, {"COMMA", ','},      {"DOT", '.'},
                                               {"SLASH", '/'},       {"GRAVE", '`'}};
    std::set<char> seen;
    for (LinuxKey key = KEY_ESC; key < KEY_KPASTERISK; ++key) {
        const std::string name = linuxKeyName(key).value_or("KEY_unnamed").substr(4);
        const auto named = names.find(name);
        if (name.size() != 1 && named == names.end()) continue;
        const char print = name.size() == 1 ? name[0] : named->second;
        const auto mac = macKeyCode(key, BoardShape::ansi);
        ASSERT_TRUE(mac && *mac < printed.size()) << name;
        EXPECT_EQ(printed[*mac], print) << name;
        seen.insert(print);
    }
    EXPECT_EQ(seen.size(), 26U + 10U + names.size());
}

TEST(KeyCodes, ReachEveryKeyThatMacOSKnows) {
    std::set<tapcore::KeyCode> reached;
    for (LinuxKey key = 0; key < KEY_CNT; ++key)
        if (const auto mac = macKeyCode(key, BoardShape::ansi)) reached.insert(*mac);
    std::set<tapcore::KeyCode> missing;
    for (tapcore::KeyCode mac = 0; mac < 128; ++mac)
        if (!reached.contains(mac)) missing.insert(mac);
    EXPECT_THAT(missing, testing::ElementsAre(52, 66, 68, 70, 77, 108, 112, 127))
        << "no keys have these codes";
}

TEST(KeyCodes, KnowTheKeysWithoutAPrint) {
    const std::map<LinuxKey, tapcore::KeyCode> keys = {
        {KEY_ENTER, 36},      {KEY_TAB, 48},       {KEY_SPACE, 49},    {KEY_BACKSPACE, 51},
        {KEY_ESC, 53},        {KEY_RIGHTMETA, 54}, {KEY_LEFTMETA, 55}, {KEY_LEFTSHIFT, 56},
        {KEY_CAPSLOCK, 57},   {KEY_LEFTALT, 58},   {KEY_LEFTCTRL, 59}, {KEY_RIGHTSHIFT, 60},
        {KEY_RIGHTALT, 61},   {KEY_RIGHTCTRL, 62}, {KEY_FN, 63},       {KEY_VOLUMEUP, 72},
        {KEY_VOLUMEDOWN, 73}, {KEY_MUTE, 74},      {KEY_KPENTER, 76},  {KEY_YEN, 93},
        {KEY_RO, 94},         {KEY_KPCOMMA, 95},   {KEY_HANJA, 102},   {KEY_HANGEUL, 104},
        {KEY_INSERT, 114},    {KEY_HOME, 115},     {KEY_DELETE, 117},  {KEY_END, 119},
        {KEY_LEFT, 123},      {KEY_UP, 126}};
    for (const auto& [key, mac] : keys)
        EXPECT_EQ(macKeyCode(key, BoardShape::ansi), mac) << *linuxKeyName(key);
    for (const LinuxKey key :
         std::initializer_list<LinuxKey>{KEY_MICMUTE, KEY_F21, KEY_POWER, BTN_LEFT, KEY_MAX})
        EXPECT_EQ(macKeyCode(key, BoardShape::ansi), std::nullopt) << key;
}

TEST(KeyCodes, PlaceTheTwoKeysOfIsoBoardsAsApplesBoardsDo) {
    EXPECT_EQ(macKeyCode(KEY_GRAVE, BoardShape::iso), 10);
    EXPECT_EQ(macKeyCode(KEY_102ND, BoardShape::iso), 50);
    EXPECT_EQ(macKeyCode(KEY_102ND, BoardShape::ansi), 10);
    EXPECT_EQ(macKeyCode(KEY_Z, BoardShape::iso), 6);
}

}  // namespace
}  // namespace tappora

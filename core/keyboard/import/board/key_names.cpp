#include "core/keyboard/import/board/key_names.h"

#include <algorithm>
#include <iterator>

#include "core/foundation/characters.h"
#include "core/keyboard/import/text/legend_markup.h"

namespace tapcore {
namespace {

// clang-format off
constexpr KeyName keys[] = {
    {0, "a", "a", "A"}, {1, "s", "s", "S"}, {2, "d", "d", "D"}, {3, "f", "f", "F"}, {4, "h", "h", "H"},
    {5, "g", "g", "G"}, {6, "z", "z", "Z"}, {7, "x", "x", "X"}, {8, "c", "c", "C"}, {9, "v", "v", "V"},
    {10, "section", "§", "±"}, {11, "b", "b", "B"}, {12, "q", "q", "Q"}, {13, "w", "w", "W"},
    {14, "e", "e", "E"}, {15, "r", "r", "R"}, {16, "y", "y", "Y"}, {17, "t", "t", "T"}, {18, "1", "1", "!"},
    {19, "2", "2", "@"}, {20, "3", "3", "#"}, {21, "4", "4", "$"}, {22, "6", "6", "^"}, {23, "5", "5", "%"},
    {24, "equal", "=", "+"}, {25, "9", "9", "("}, {26, "7", "7", "&"}, {27, "minus", "-", "_"},
    {28, "8", "8", "*"}, {29, "0", "0", ")"}, {30, "right-bracket", "]", "}"}, {31, "o", "o", "O"},
    {32, "u", "u", "U"}, {33, "left-bracket", "[", "{"}, {34, "i", "i", "I"}, {35, "p", "p", "P"},
    {36, "return", "", ""}, {37, "l", "l", "L"}, {38, "j", "j", "J"}, {39, "quote", "'", "\""},
    {40, "k", "k", "K"}, {41, "semicolon", ";", ":"}, {42, "backslash", "\\", "|"}, {43, "comma", ",", "<"},
    {44, "slash", "/", "?"}, {45, "n", "n", "N"}, {46, "m", "m", "M"}, {47, "period", ".", ">"},
    {48, "tab", "", ""}, {49, "space", "", ""}, {50, "grave", "`", "~"}, {51, "delete", "", ""},
    {53, "escape", "", ""}, {54, "right-command", "", ""}, {55, "left-command", "", ""},
    {56, "left-shift", "", ""}, {57, "caps-lock", "", ""}, {58, "left-option", "", ""},
    {59, "left-control", "", ""}, {60, "right-shift", "", ""}, {61, "right-option", "", ""},
    {62, "right-control", "", ""}, {63, "fn", "", ""}, {64, "f17", "", ""}, {65, "keypad-decimal", "", ""},
    {67, "keypad-multiply", "", ""}, {69, "keypad-plus", "", ""}, {71, "keypad-clear", "", ""},
    {72, "volume-up", "", ""}, {73, "volume-down", "", ""}, {74, "mute", "", ""}, {75, "keypad-divide", "", ""},
    {76, "keypad-enter", "", ""}, {78, "keypad-minus", "", ""}, {79, "f18", "", ""}, {80, "f19", "", ""},
    {81, "keypad-equal", "", ""}, {82, "keypad-0", "", ""}, {83, "keypad-1", "", ""}, {84, "keypad-2", "", ""},
    {85, "keypad-3", "", ""}, {86, "keypad-4", "", ""}, {87, "keypad-5", "", ""}, {88, "keypad-6", "", ""},
    {89, "keypad-7", "", ""}, {90, "f20", "", ""}, {91, "keypad-8", "", ""}, {92, "keypad-9", "", ""},
    {93, "yen", "", ""}, {94, "underscore", "", ""}, {95, "keypad-comma", "", ""}, {96, "f5", "", ""},
    {97, "f6", "", ""}, {98, "f7", "", ""}, {99, "f3", "", ""}, {100, "f8", "", ""}, {101, "f9", "", ""},
    {102, "eisu", "", ""}, {103, "f11", "", ""}, {104, "kana", "", ""}, {105, "f13", "", ""},
    {106, "f16", "", ""}, {107, "f14", "", ""}, {109, "f10", "", ""}, {110, "menu", "", ""},
    {111, "f12", "", ""}, {113, "f15", "", ""}, {114, "help", "", ""}, {115, "home", "", ""},
    {116, "page-up", "", ""}, {117, "forward-delete", "", ""}, {118, "f4", "", ""}, {119, "end", "", ""},
    {120, "f2", "", ""}, {121, "page-down", "", ""}, {122, "f1", "", ""}, {123, "left-arrow", "", ""},
    {124, "right-arrow", "", ""}, {125, "down-arrow", "", ""}, {126, "up-arrow", "", ""},
};

struct Alias {
    std::string_view name;  ///< as `comparable` gives it
    NamedCodes codes;
};

// What a key's own name does not say already: other words for it, and the pairs.
constexpr Alias aliases[] = {
    {"esc", {53, 53}}, {"⎋", {53, 53}}, {"⇥", {48, 48}}, {"↹", {48, 48}}, {"caps", {57, 57}}, {"⇪", {57, 57}},
    {"enter", {36, 76}}, {"return", {36, 76}}, {"⏎", {36, 76}}, {"↵", {36, 76}}, {"↩", {36, 76}}, {"⌤", {76, 76}},
    {"backspace", {51, 51}}, {"bksp", {51, 51}}, {"bspc", {51, 51}}, {"bs", {51, 51}}, {"⌫", {51, 51}},
    {"del", {117, 117}}, {"delete", {117, 117}}, {"⌦", {117, 117}},
    {"spc", {49, 49}}, {"spacebar", {49, 49}}, {"␣", {49, 49}},
    {"shift", {56, 60}}, {"⇧", {56, 60}}, {"lshift", {56, 56}}, {"rshift", {60, 60}},
    {"ctrl", {59, 62}}, {"control", {59, 62}}, {"ctl", {59, 62}}, {"strg", {59, 62}}, {"⌃", {59, 62}},
    {"lctrl", {59, 59}}, {"rctrl", {62, 62}},
    {"alt", {58, 61}}, {"option", {58, 61}}, {"opt", {58, 61}}, {"⌥", {58, 61}}, {"⎇", {58, 61}},
    {"lalt", {58, 58}}, {"ralt", {61, 61}}, {"altgr", {61, 61}},
    {"win", {55, 54}}, {"windows", {55, 54}}, {"super", {55, 54}}, {"gui", {55, 54}}, {"meta", {55, 54}},
    {"os", {55, 54}}, {"cmd", {55, 54}}, {"command", {55, 54}}, {"⌘", {55, 54}}, {"❖", {55, 54}},
    {"lgui", {55, 55}}, {"rgui", {54, 54}}, {"lwin", {55, 55}}, {"rwin", {54, 54}},
    {"globe", {63, 63}}, {"🌐", {63, 63}}, {"app", {110, 110}}, {"apps", {110, 110}}, {"contextmenu", {110, 110}},
    {"≣", {110, 110}}, {"☰", {110, 110}}, {"▤", {110, 110}},
    {"prtsc", {105, 105}}, {"prtscn", {105, 105}}, {"prtscr", {105, 105}}, {"print", {105, 105}},
    {"printscreen", {105, 105}}, {"printscr", {105, 105}}, {"psc", {105, 105}}, {"pscr", {105, 105}},
    {"prtscsysrq", {105, 105}}, {"printsysrq", {105, 105}}, {"scrolllock", {107, 107}}, {"scroll", {107, 107}},
    {"scrlk", {107, 107}}, {"slck", {107, 107}}, {"pause", {113, 113}}, {"break", {113, 113}},
    {"pausebreak", {113, 113}}, {"paus", {113, 113}}, {"ins", {114, 114}}, {"insert", {114, 114}},
    {"pgup", {116, 116}}, {"pgdn", {121, 121}}, {"pgdown", {121, 121}}, {"⇞", {116, 116}}, {"⇟", {121, 121}},
    {"↖", {115, 115}}, {"↘", {119, 119}},
    {"left", {123, 123}}, {"right", {124, 124}}, {"down", {125, 125}}, {"up", {126, 126}},
    {"←", {123, 123}}, {"→", {124, 124}}, {"↓", {125, 125}}, {"↑", {126, 126}},
    {"◀", {123, 123}}, {"▶", {124, 124}}, {"▼", {125, 125}}, {"▲", {126, 126}},
    {"numlock", {71, 71}}, {"numlk", {71, 71}}, {"nmlk", {71, 71}}, {"clear", {71, 71}}, {"⌧", {71, 71}},
    {"-", {27, 78}}, {"=", {24, 81}}, {"/", {44, 75}}, {".", {47, 65}}, {"*", {67, 67}}, {"+", {69, 69}},
    {"0", {29, 82}}, {"1", {18, 83}}, {"2", {19, 84}}, {"3", {20, 85}}, {"4", {21, 86}}, {"5", {23, 87}},
    {"6", {22, 88}}, {"7", {26, 89}}, {"8", {28, 91}}, {"9", {25, 92}},
    {"0ins", {82, 82}}, {"1end", {83, 83}}, {"2↓", {84, 84}}, {"3pgdn", {85, 85}}, {"4←", {86, 86}},
    {"6→", {88, 88}}, {"7home", {89, 89}}, {"8↑", {91, 91}}, {"9pgup", {92, 92}}, {".del", {65, 65}},
    // As XKB names keys.
    {"rtrn", {36, 36}}, {"spce", {49, 49}}, {"lfsh", {56, 56}}, {"rtsh", {60, 60}}, {"lctl", {59, 59}},
    {"rctl", {62, 62}}, {"dele", {117, 117}}, {"rght", {124, 124}}, {"prsc", {105, 105}}, {"sclk", {107, 107}},
    {"kpen", {76, 76}},
    {"英数", {102, 102}}, {"かな", {104, 104}}, {"¥", {93, 93}}, {"volup", {72, 72}},
    {"voldown", {73, 73}},
};
// clang-format on

/// Whether an id is a name but for its dashes.
bool isSameName(std::string_view id, std::string_view name) {
    std::size_t at = 0;
    for (const char c : id) {
        if (c == '-') continue;
        if (at == name.size() || name[at++] != c) return false;
    }
    return at == name.size();
}

}  // namespace

const KeyName* keyNamed(KeyCode code) {
    const auto found =
        std::find_if(std::begin(keys), std::end(keys), [&](const KeyName& key) { return key.code == code; });
    return found == std::end(keys) ? nullptr : found;
}

std::string comparable(std::string_view legend) {
    const std::string plain = plainLegend(legend);
    std::string text = lowercased(trimmedWhiteSpace(plain));
    if (isSingleCharacter(text)) return text;
    std::erase_if(text, [](char c) { return c == ' ' || c == '-' || c == '_'; });
    const bool isBracketed = text.size() > 2 && text.front() == '<' && text.back() == '>';
    return isBracketed ? text.substr(1, text.size() - 2) : text;
}

std::optional<NamedCodes> codesNamed(std::string_view legend) {
    const std::string name = comparable(legend);
    for (const Alias& alias : aliases)
        if (alias.name == name) return alias.codes;
    for (const KeyName& key : keys)
        if (!key.types() && isSameName(key.id, name)) return NamedCodes{key.code, key.code};
    return std::nullopt;
}

const KeyName* keyTyping(std::string_view plain) {
    const std::string name = comparable(plain);
    for (const KeyName& key : keys)
        if (key.types() && key.plain == name) return &key;
    return nullptr;
}

const KeyName* keyTypingShifted(std::string_view shifted) {
    const std::string name = comparable(shifted);
    for (const KeyName& key : keys)
        if (key.types() && key.shifted == name) return &key;
    return nullptr;
}

bool isMacModifier(std::string_view legend) {
    const std::string name = comparable(legend);
    return name == "⌘" || name == "command" || name == "cmd" || name == "⌥" || name == "option";
}

}  // namespace tapcore

#include "core/keyboard/import/board/firmware_keycodes.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "core/foundation/ascii.h"
#include "core/foundation/characters.h"
#include "core/foundation/text_pieces.h"
#include "core/keyboard/import/board/key_names.h"

namespace tapcore {
namespace {

struct Word {
    std::string_view names;  ///< separated by spaces
    KeyCode code;
};

// clang-format off
constexpr Word words[] = {
    {"ENT ENTER RETURN", 36}, {"ESC ESCAPE GESC", 53}, {"BSPC BACKSPACE", 51}, {"TAB", 48}, {"SPC SPACE", 49},
    {"MINS MINUS", 27}, {"EQL EQUAL", 24}, {"LBRC LEFT_BRACKET", 33}, {"RBRC RIGHT_BRACKET", 30},
    {"BSLS BACKSLASH NUHS NONUS_HASH", 42}, {"SCLN SEMICOLON", 41}, {"QUOT QUOTE", 39}, {"GRV GRAVE", 50},
    {"COMM COMMA", 43}, {"DOT", 47}, {"SLSH SLASH", 44}, {"NUBS NONUS_BACKSLASH", 10},
    {"CAPS CAPS_LOCK CAPSLOCK", 57}, {"PSCR PRINT_SCREEN", 105}, {"SCRL SCROLL_LOCK BRMD", 107},
    {"PAUS PAUSE BRK BRMU", 113}, {"INS INSERT HELP", 114}, {"HOME", 115}, {"PGUP PAGE_UP", 116},
    {"DEL DELETE", 117}, {"END", 119}, {"PGDN PAGE_DOWN", 121}, {"RGHT RIGHT", 124}, {"LEFT", 123},
    {"DOWN", 125}, {"UP", 126}, {"NUM NUM_LOCK NLCK", 71}, {"PSLS KP_SLASH", 75}, {"PAST KP_ASTERISK", 67},
    {"PMNS KP_MINUS", 78}, {"PPLS KP_PLUS", 69}, {"PENT KP_ENTER", 76}, {"PDOT KP_DOT", 65},
    {"PEQL KP_EQUAL", 81}, {"PCMM KP_COMMA", 95}, {"P0 KP_0", 82}, {"P1 KP_1", 83}, {"P2 KP_2", 84},
    {"P3 KP_3", 85}, {"P4 KP_4", 86}, {"P5 KP_5", 87}, {"P6 KP_6", 88}, {"P7 KP_7", 89}, {"P8 KP_8", 91},
    {"P9 KP_9", 92}, {"APP APPLICATION MENU", 110}, {"MUTE KB_MUTE AUDIO_MUTE", 74},
    {"VOLU KB_VOLUME_UP AUDIO_VOL_UP", 72}, {"VOLD KB_VOLUME_DOWN AUDIO_VOL_DOWN", 73},
    {"INT1 INTERNATIONAL_1 RO", 94}, {"INT3 INTERNATIONAL_3 JYEN", 93}, {"INT4 INTERNATIONAL_4 HENK", 104},
    {"INT5 INTERNATIONAL_5 MHEN", 102}, {"LNG1 LANGUAGE_1 LANG1", 104}, {"LNG2 LANGUAGE_2 LANG2", 102},
    {"LCTL LEFT_CTRL LCTRL LCPO MOD_LCTL", 59}, {"LSFT LEFT_SHIFT LSHIFT LSPO MOD_LSFT", 56},
    {"LALT LEFT_ALT LOPT LAPO MOD_LALT", 58}, {"LGUI LEFT_GUI LCMD LWIN MOD_LGUI", 55},
    {"RCTL RIGHT_CTRL RCTRL RCPC MOD_RCTL", 62},
    {"RSFT RIGHT_SHIFT RSHIFT RSPC SENT SFTENT MOD_RSFT", 60}, {"RALT RIGHT_ALT ROPT ALGR RAPC MOD_RALT", 61},
    {"RGUI RIGHT_GUI RCMD RWIN MOD_RGUI", 54},
};
// clang-format on

bool hasWord(std::string_view list, std::string_view word) {
    while (!list.empty())
        if (takePiece(list, ' ') == word) return true;
    return false;
}

std::optional<KeyCode> plainCode(std::string_view name) {
    const auto known = std::find_if(std::begin(words), std::end(words),
                                    [&](const Word& word) { return hasWord(word.names, name); });
    if (known != std::end(words)) return known->code;
    const bool isPlain = name.size() == 1 && (isCapital(name[0]) || isDigit(name[0]));
    if (const KeyName* key = isPlain ? keyTyping(name) : nullptr) return key->code;
    const bool isFunction = name.size() > 1 && name[0] == 'F' && isDigit(name[1]);
    if (const auto named = isFunction ? codesNamed(name) : std::nullopt) return named->left;
    return std::nullopt;
}

/// The inner part of "NAME(first, last)": what its key sends when it is tapped.
std::optional<std::string_view> tapped(std::string_view name, std::string_view arguments) {
    const bool isLayerTap =
        name == "MT" ||
        (name.starts_with("LT") && name.find_first_not_of("0123456789", 2) == std::string_view::npos);
    if (!isLayerTap && !name.ends_with("_T") && name != "OSM") return std::nullopt;
    const auto comma = arguments.rfind(',');
    return trimmedWhiteSpace(comma == std::string_view::npos ? arguments : arguments.substr(comma + 1));
}

}  // namespace

std::optional<KeyCode> firmwareKeyCode(std::string_view word) {
    word = trimmedWhiteSpace(word);
    const auto open = word.find('(');
    if (open != std::string_view::npos) {
        if (!word.ends_with(')')) return std::nullopt;
        const auto inner = tapped(word.substr(0, open), word.substr(open + 1, word.size() - open - 2));
        return inner && inner->find('(') == std::string_view::npos ? firmwareKeyCode(*inner) : std::nullopt;
    }
    for (const std::string_view prefix : {"KC_", "QK_", "SC_"})
        if (word.starts_with(prefix)) {
            word.remove_prefix(prefix.size());
            return word == "GRAVE_ESCAPE" ? std::optional<KeyCode>(53) : plainCode(word);
        }
    return word.starts_with("MOD_") ? plainCode(word) : std::nullopt;
}

}  // namespace tapcore

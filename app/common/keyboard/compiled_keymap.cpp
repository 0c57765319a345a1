#include "app/common/keyboard/compiled_keymap.h"

#include <linux/input-event-codes.h>
#include <xkbcommon/xkbcommon.h>

#include <array>
#include <cstdarg>
#include <iterator>
#include <string_view>
#include <utility>
#include <vector>

#include "app/common/keyboard/typing_rows.h"
#include "core/foundation/owned.h"
namespace tappora {
namespace {

using tapcore::KeyCode;

using Context = tapcore::Owned<xkb_context, xkb_context_unref>;
using Keymap = tapcore::Owned<xkb_keymap, xkb_keymap_unref>;
using State = tapcore::Owned<xkb_state, xkb_state_unref>;

/// Keys whose numbers follow each other in Linux, and their macOS codes.
struct Row {
    xkb_keycode_t first;
    std::vector<KeyCode> codes;
};

template <std::size_t count>
Row row(xkb_keycode_t first, const std::array<KeyCode, count>& codes) {
    return {first, {codes.begin(), codes.end()}};
}

std::vector<Row> typingRows(IsoKeys isoKeys) {
    const KeyCode leftOfOne = isoKeys == IsoKeys::present ? TypingRows::section : TypingRows::grave;
    return {{KEY_GRAVE, {leftOfOne}},
            row(KEY_1, TypingRows::digits),
            row(KEY_Q, TypingRows::upper),
            row(KEY_A, TypingRows::home),
            {KEY_BACKSLASH, {TypingRows::backslash}},
            row(KEY_Z, TypingRows::lower)};
}

/// Those with the keys that only ISO and Japanese boards have.
std::vector<Row> allRows(IsoKeys isoKeys) {
    constexpr KeyCode yen = 93;
    constexpr KeyCode ro = 94;
    std::vector<Row> rows = typingRows(isoKeys);
    rows.push_back({KEY_102ND, {isoKeys == IsoKeys::present ? TypingRows::grave : TypingRows::section}});
    rows.push_back({KEY_YEN, {yen}});
    rows.push_back({KEY_RO, {ro}});
    return rows;
}

/// A dead key shows its accent alone.
std::string_view accentOf(xkb_keysym_t symbol) {
    constexpr std::pair<xkb_keysym_t, std::string_view> accents[] = {
        {XKB_KEY_dead_grave, "`"},       {XKB_KEY_dead_acute, "´"},         {XKB_KEY_dead_circumflex, "^"},
        {XKB_KEY_dead_tilde, "~"},       {XKB_KEY_dead_macron, "¯"},        {XKB_KEY_dead_breve, "˘"},
        {XKB_KEY_dead_abovedot, "˙"},    {XKB_KEY_dead_diaeresis, "¨"},     {XKB_KEY_dead_abovering, "˚"},
        {XKB_KEY_dead_doubleacute, "˝"}, {XKB_KEY_dead_caron, "ˇ"},         {XKB_KEY_dead_cedilla, "¸"},
        {XKB_KEY_dead_ogonek, "˛"},      {XKB_KEY_dead_iota, "ͺ"},          {XKB_KEY_dead_greek, "µ"},
        {XKB_KEY_dead_currency, "¤"},    {XKB_KEY_dead_belowdot, "\u0323"}, {XKB_KEY_dead_hook, "\u0309"},
        {XKB_KEY_dead_horn, "\u031B"},   {XKB_KEY_dead_stroke, "\u0335"},
    };
    for (const auto& [dead, accent] : accents)
        if (dead == symbol) return accent;
    return "";
}

/// Whether a character leaves something to see.
bool isVisible(char32_t scalar) {
    const bool isControl = scalar <= ' ' || (scalar >= 0x7F && scalar <= 0xA0) || scalar == 0xAD;
    const bool isFormat = (scalar >= 0x2000 && scalar <= 0x200F) || (scalar >= 0x2028 && scalar <= 0x202F);
    return !isControl && !isFormat;
}

/// "" for what is no character: keys of layers, of composing, and those without a symbol.
std::string legendOf(xkb_keysym_t symbol) {
    if (const std::string_view accent = accentOf(symbol); !accent.empty()) return std::string(accent);
    if (!isVisible(xkb_keysym_to_utf32(symbol))) return "";
    std::array<char, 8> text{};
    xkb_keysym_to_utf8(symbol, text.data(), text.size());
    return text.data();
}

void addLegend(tapcore::Legends& legends, KeyCode code, const std::string& plain,
               const std::string& shifted) {
    if (plain.empty()) return;
    legends[code] = {plain};
    if (!shifted.empty() && shifted != plain) legends[code].push_back(shifted);
}

void noLog(xkb_context*, xkb_log_level, const char*, va_list) {}

Keymap compile(xkb_context* context, const XkbLayout& keyboard) {
    const xkb_rule_names names{.rules = "evdev",
                               .model = "pc105",
                               .layout = keyboard.layout.c_str(),
                               .variant = keyboard.variant.c_str(),
                               .options = ""};
    return Keymap(xkb_keymap_new_from_names(context, &names, XKB_KEYMAP_COMPILE_NO_FLAGS));
}

}  // namespace

std::set<KeyCode> typingCodes(IsoKeys isoKeys) {
    std::set<KeyCode> codes;
    for (const Row& row : typingRows(isoKeys)) codes.insert(row.codes.begin(), row.codes.end());
    return codes;
}

std::optional<CompiledKeymap> compiledKeymap(const XkbLayout& keyboard, IsoKeys isoKeys) {
    constexpr xkb_keycode_t offset = 8;  // between Linux's numbers of keys and those of XKB
    const Context context(xkb_context_new(XKB_CONTEXT_NO_ENVIRONMENT_NAMES));
    if (!context) return std::nullopt;
    xkb_context_set_log_fn(context.get(), noLog);
    const Keymap keymap = compile(context.get(), keyboard);
    if (!keymap) return std::nullopt;
    const State plain(xkb_state_new(keymap.get()));
    const State shifted(xkb_state_new(keymap.get()));
    xkb_state_update_key(shifted.get(), KEY_LEFTSHIFT + offset, XKB_KEY_DOWN);

    const char* name = xkb_keymap_layout_get_name(keymap.get(), 0);
    CompiledKeymap result{.name = name ? name : keyboard.layout, .legends = {}};
    for (const Row& row : allRows(isoKeys))
        for (std::size_t i = 0; i < row.codes.size(); ++i) {
            const auto key = static_cast<xkb_keycode_t>(row.first + i + offset);
            addLegend(result.legends, row.codes[i], legendOf(xkb_state_key_get_one_sym(plain.get(), key)),
                      legendOf(xkb_state_key_get_one_sym(shifted.get(), key)));
        }
    return result.legends.empty() ? std::nullopt : std::optional(std::move(result));
}

}  // namespace tappora

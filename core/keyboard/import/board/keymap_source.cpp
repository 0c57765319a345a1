#include "core/keyboard/import/board/keymap_source.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <utility>

#include "core/foundation/characters.h"

namespace tapcore {
namespace {

constexpr std::size_t mostLayers = 32;

using Defines = std::map<std::string, std::string, std::less<>>;

bool isWordPart(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

/// The length of the comment or string that a text starts with; 0 for none.
std::size_t skippedLength(std::string_view text) {
    const auto past = [&](std::string_view end, std::size_t from) {
        const auto at = text.find(end, from);
        return at == std::string_view::npos ? text.size() : at + end.size();
    };
    if (text.starts_with("//")) return std::min(text.find('\n'), text.size());
    if (text.starts_with("/*")) return past("*/", 2);
    if (!text.starts_with('"') && !text.starts_with('\'')) return 0;
    for (std::size_t at = 1; at < text.size(); ++at) {
        if (text[at] == '\\') ++at;
        else if (text[at] == text[0] || text[at] == '\n') return at + 1;
    }
    return text.size();
}

std::string withoutComments(std::string_view text) {
    std::string plain;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t skipped = skippedLength(text.substr(at));
        plain += skipped > 0 ? ' ' : text[at];
        at += std::max<std::size_t>(skipped, 1);
    }
    return plain;
}

void define(std::string_view line, Defines& defines) {
    constexpr std::string_view word = "define";
    line = trimmedWhiteSpace(line.substr(1));
    if (!line.starts_with(word)) return;
    line = trimmedWhiteSpace(line.substr(word.size()));
    const auto end = std::find_if_not(line.begin(), line.end(), isWordPart) - line.begin();
    const auto name = line.substr(0, static_cast<std::size_t>(end));
    defines[std::string(name)] = trimmedWhiteSpace(line.substr(name.size()));
}

/// The text without the preprocessor's lines, of which the definitions are kept apart.
std::string withoutDirectives(std::string_view text, Defines& defines) {
    std::string plain;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        if (const auto trimmed = trimmedWhiteSpace(line); trimmed.starts_with('#')) define(trimmed, defines);
        else plain.append(line).push_back('\n');
        text.remove_prefix(std::min(line.size() + 1, text.size()));
    }
    return plain;
}

/// The text between the bracket at `open` and the one that closes it.
std::string_view inBrackets(std::string_view text, std::size_t open) {
    std::size_t depth = 0;
    for (std::size_t at = open; at < text.size(); ++at) {
        if (text[at] == '(' || text[at] == '{' || text[at] == '[') ++depth;
        const bool closes = text[at] == ')' || text[at] == '}' || text[at] == ']';
        if (closes && --depth == 0) return text.substr(open + 1, at - open - 1);
    }
    throw KeymapError("a bracket of the keymap is not closed");
}

std::vector<std::string> splitAtCommas(std::string_view list) {
    std::vector<std::string> parts(1);
    int depth = 0;
    for (const char c : list) {
        if (c == '(' || c == '{') ++depth;
        if (c == ')' || c == '}') --depth;
        if (c == ',' && depth == 0) parts.emplace_back();
        else parts.back() += c;
    }
    for (std::string& part : parts) part = trimmedWhiteSpace(std::string(part));
    if (parts.back().empty()) parts.pop_back();
    return parts;
}

/// One layer as it stands in the array: `[_BASE] = LAYOUT(…)`.
struct Layer {
    std::string number;
    std::string layout;
    std::string_view words;
};

Layer layerIn(const std::string& entry) {
    Layer layer;
    std::string_view rest = trimmedWhiteSpace(entry);
    if (rest.starts_with('[')) {
        const auto inside = inBrackets(rest, 0);
        layer.number = trimmedWhiteSpace(inside);
        rest = trimmedWhiteSpace(rest.substr(inside.size() + 2));
        if (rest.starts_with('=')) rest = trimmedWhiteSpace(rest.substr(1));
    }
    const auto open = rest.find('(');
    if (open == std::string_view::npos) throw KeymapError("a layer of the keymap is not LAYOUT(…)");
    layer.layout = trimmedWhiteSpace(rest.substr(0, open));
    layer.words = inBrackets(rest, open);
    return layer;
}

/// Whether an `enum` begins with a name, which then is 0.
bool beginsAnEnum(std::string_view text, std::string_view name) {
    for (auto at = text.find("enum"); at != std::string_view::npos; at = text.find("enum", at + 1)) {
        const auto open = text.find('{', at);
        if (open == std::string_view::npos) return false;
        const std::string_view first = trimmedWhiteSpace(text.substr(open + 1));
        const bool isWhole = first.size() > name.size() && !isWordPart(first[name.size()]);
        if (first.starts_with(name) && isWhole) return true;
    }
    return false;
}

bool isBase(const std::string& number, std::string_view text, const Defines& defines) {
    if (number == "0") return true;
    const auto defined = defines.find(number);
    if (defined != defines.end()) return defined->second == "0";
    return !number.empty() && beginsAnEnum(text, number);
}

std::string replaced(std::string word, const Defines& defines) {
    for (int times = 0; times < 8; ++times) {
        const auto defined = defines.find(word);
        if (defined == defines.end() || defined->second.empty()) break;
        word = defined->second;
    }
    return word;
}

}  // namespace

bool isKeymapSource(std::string_view text) {
    while (true) {
        text = trimmedWhiteSpace(text);
        const bool isComment = text.starts_with("//") || text.starts_with("/*");
        if (!isComment) break;
        text.remove_prefix(skippedLength(text));
    }
    return !text.empty() && !text.starts_with('{') && !text.starts_with('[');
}

Keymap readKeymapSource(std::string_view source) {
    Defines defines;
    const std::string text = withoutDirectives(withoutComments(source), defines);
    const auto name = text.find("keymaps");
    const auto open = name == std::string::npos ? name : text.find('{', name);
    if (open == std::string::npos)
        throw KeymapError("not a keymap: neither JSON nor C with an array keymaps");
    const auto entries = splitAtCommas(inBrackets(text, open));
    if (entries.empty()) throw KeymapError("the array keymaps is empty");
    if (entries.size() > mostLayers)
        throw KeymapError("more than " + std::to_string(mostLayers) +
                          " layers, which the firmware cannot have");
    std::vector<Layer> layers;
    for (const std::string& entry : entries) layers.push_back(layerIn(entry));
    const auto base = std::find_if(layers.begin(), layers.end(),
                                   [&](const Layer& layer) { return isBase(layer.number, text, defines); });
    const Layer& layer = base == layers.end() ? layers.front() : *base;
    Keymap keymap{.rows = {splitAtCommas(layer.words)}, .layout = replaced(layer.layout, defines)};
    for (std::string& word : keymap.rows[0]) word = replaced(word, defines);
    return keymap;
}

}  // namespace tapcore

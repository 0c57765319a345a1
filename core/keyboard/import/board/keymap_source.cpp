#include "core/keyboard/import/board/keymap_source.h"

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

#include "core/foundation/characters.h"
#include "core/keyboard/import/board/c_source.h"

namespace tapcore {
namespace {

constexpr std::size_t mostLayers = 32;

/// One layer as it is in the array: `[_BASE] = LAYOUT(…)`.
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
    layer.layout = trimmedWhiteSpace(rest.substr(0, open));
    if (open == std::string_view::npos || !std::all_of(layer.layout.begin(), layer.layout.end(), isWordPart))
        throw KeymapError("a layer of the keymap is not LAYOUT(…)");
    layer.words = inBrackets(rest, open);
    return layer;
}

[[noreturn]] void refuse(const std::string& why) {
    throw KeymapError(why + "; save the keymap as keymap.json");
}

/// Where the values of the next array `keymaps[…] = {` begin; npos when not found.
std::size_t openingBracket(std::string_view text, std::size_t from) {
    constexpr std::string_view name = "keymaps", space = " \t\r\n";
    for (auto at = text.find(name, from); at < text.size(); at = text.find(name, at)) {
        const bool begins = at == 0 || !isWordPart(text[at - 1]);
        at = std::min(text.find_first_not_of(space, at + name.size()), text.size());
        if (!begins || at == text.size() || text[at] != '[') continue;
        at = std::min(text.find_first_of("={;", at), text.size());
        if (at == text.size() || text[at] != '=') continue;
        at = std::min(text.find_first_not_of(space, at + 1), text.size());
        if (at < text.size() && text[at] == '{') return at;
    }
    return std::string_view::npos;
}

/// What is between the brackets of the array `keymaps`.
std::string_view arrayIn(std::string_view text) {
    const std::size_t open = openingBracket(text, 0);
    if (open == std::string_view::npos)
        throw KeymapError("not a keymap: neither JSON nor C with an array keymaps");
    const std::string_view array = inBrackets(text, open);
    if (array.find('#') != std::string_view::npos) refuse("has conditions, such as #if");
    if (openingBracket(text, open + array.size()) != std::string_view::npos)
        refuse("has the array keymaps twice");
    return array;
}

/// The layer 0. A layer without a number comes after the one before it.
const Layer& baseOf(const std::vector<Layer>& layers, const CSource& source) {
    const Layer* base = nullptr;
    std::set<std::int64_t> seen;
    std::optional<std::int64_t> number = -1;
    for (const Layer& layer : layers) {
        if (!layer.number.empty()) number = source.numberOf(layer.number);
        else if (number) ++*number;
        if (number && !seen.insert(*number).second) refuse("has layer " + std::to_string(*number) + " twice");
        if (number == 0) base = &layer;
    }
    if (!base) refuse("cannot tell which layer is the base");
    return *base;
}

/// The words of a layer, with what the file defines in their place: one word or several.
class Words {
  public:
    explicit Words(const CSource& source) : source_(source) {}

    std::vector<std::string> in(std::string_view list) {
        add(list, 0);
        return std::move(words_);
    }

  private:
    static constexpr int mostSteps = 8;

    void add(std::string_view list, int steps) {
        if (list.size() > left_) throw KeymapError("its definitions make more than 1 MiB of keys");
        left_ -= list.size();
        for (const std::string& part : splitAtCommas(list)) {
            const std::string_view word = withoutBrackets(part);
            const auto defined = source_.defines.find(word);
            const bool isName = defined != source_.defines.end() && !defined->second.empty();
            if (isName && steps < mostSteps) add(withoutBrackets(defined->second), steps + 1);
            else words_.emplace_back(word);
        }
    }

    const CSource& source_;
    std::vector<std::string> words_ = {};
    std::size_t left_ = largestKeymap;
};

}  // namespace

bool isKeymapSource(std::string_view text) {
    while (true) {
        text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n\v\f"), text.size()));
        const bool isComment = text.starts_with("//") || text.starts_with("/*");
        if (!isComment) break;
        text.remove_prefix(skippedLength(text));
    }
    return !text.empty() && !text.starts_with('{') && !text.starts_with('[');
}

Keymap readKeymapSource(std::string_view text) {
    const CSource source = readCSource(text);
    const auto entries = splitAtCommas(arrayIn(source.text));
    if (entries.empty()) throw KeymapError("the array keymaps is empty");
    if (entries.size() > mostLayers)
        throw KeymapError("more than " + std::to_string(mostLayers) +
                          " layers, which the firmware cannot have");
    std::vector<Layer> layers;
    for (const std::string& entry : entries) layers.push_back(layerIn(entry));
    const Layer& base = baseOf(layers, source);
    return {.rows = {Words(source).in(base.words)}, .layout = source.replaced(base.layout)};
}

}  // namespace tapcore

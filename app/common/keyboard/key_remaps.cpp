#include "app/common/keyboard/key_remaps.h"

#include <fmt/format.h>

#include <set>
#include <string>

#include "app/common/folder/settings.h"
#include "app/common/harmless_text.h"
#include "app/common/keyboard/key_names.h"
#include "app/common/keyboard/keyboard.h"
#include "app/common/program.h"
#include "core/foundation/characters.h"
#include "core/foundation/text_pieces.h"

namespace tappora {
namespace {

std::set<tapcore::KeyCode> requiredKeys(std::string_view name, const tapcore::LegendSet& layout) {
    auto codes = keysNamed(tapcore::trimmedWhiteSpace(name), layout);
    if (codes.empty())
        throw UsageError(fmt::format("no such key: {}; see tappora keys",
                                     harmlessLine(std::string(tapcore::trimmedWhiteSpace(name)))));
    return codes;
}

/// The one key that a name stands for: of two, the left one.
tapcore::KeyCode requiredKey(std::string_view name, const tapcore::LegendSet& layout) {
    const auto codes = requiredKeys(name, layout);
    const auto left = keysNamed("left " + std::string(tapcore::trimmedWhiteSpace(name)), layout);
    return left.empty() ? *codes.begin() : *left.begin();
}

void addPair(tapcore::KeyRemap& remap, std::string_view pair, const tapcore::LegendSet& layout) {
    std::string_view target = pair;
    const std::string_view source = tapcore::takePiece(target, '=');
    if (target.empty() || target.find('=') != target.npos)
        throw UsageError(fmt::format(
            "{}: not KEY=KEY, such as caps lock=control; a key may be named by its code, as key 24",
            harmlessLine(std::string(pair))));
    const tapcore::KeyCode as = requiredKey(target, layout);
    for (const tapcore::KeyCode code : requiredKeys(source, layout))
        if (!remap.try_emplace(code, as).second)
            throw UsageError(fmt::format("{}: that key is named twice", harmlessLine(std::string(pair))));
}

}  // namespace

tapcore::KeyRemap parseRemaps(std::string_view text, const tapcore::LegendSet& layout) {
    tapcore::KeyRemap remap;
    for (const std::string_view pair : tapcore::pieces(text, ',')) addPair(remap, pair, layout);
    return remap;
}

std::string remapsText(const tapcore::KeyRemap& remap) {
    std::string text;
    for (const auto& [from, to] : remap)
        text += fmt::format("{}key {}=key {}", text.empty() ? "" : ", ", from, to);
    return text;
}

tapcore::Store openShown(const FolderOptions& options, const Environment& environment) {
    const tapcore::Store store = openStore(options, environment);
    const Settings settings = Settings::read(environment);
    const auto text = settings.text(remapsKey);
    if (!text || text->empty()) return store;
    try {
        return store.remapping(parseRemaps(*text, Keyboards(environment, store).chosenLayout({})));
    } catch (const UsageError& error) {
        settings.warnOf(remapsKey, error.what());
        return store;
    }
}

}  // namespace tappora

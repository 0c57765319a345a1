#include "app/tappora/keys_tasks.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <set>
#include <vector>

#include "app/common/folder/folder_settings.h"
#include "app/common/harmless_text.h"
#include "app/common/keyboard/board_counts.h"
#include "app/common/keyboard/key_names.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "core/foundation/characters.h"
#include "core/foundation/integers.h"
#include "core/foundation/json_fields.h"

namespace tappora {
namespace {

using nlohmann::json;
using tapcore::FolderConfig;
using tapcore::KeyCode;

/// The board and layout that are meant, and what the folder says of their keys.
struct Keys {
    Keys(const KeysOptions& options, const Environment& environment)
        : store(openStore(options.folder, environment)),
          config(FolderConfig::read(store.root)),
          board(Keyboards(environment, store).chosenBoard(options.keyboard)),
          layout(Keyboards(environment, store).chosenLayout(options.keyboard)) {
        FolderConfig filed = config;
        filed.migrateLearned(layout.id);
        for (const auto& [code, texts] : filed.learnedKeys(board.id, layout.id)) learned.insert(code);
    }

    tapcore::Store store;
    FolderConfig config;
    tapcore::Board board;
    LegendSet layout;
    std::set<KeyCode> learned;
};

std::vector<std::string> textsOf(KeyCode code, const tapcore::Legends& legends) {
    const auto found = legends.find(code);
    return found == legends.end() ? std::vector<std::string>{} : found->second;
}

json toJson(KeyCode code, const Keys& keys) {
    json entry = {{"code", code},
                  {"legend", textsOf(code, keys.layout.legends)},
                  {"learned", keys.learned.contains(code)}};
    if (const auto word = keys.config.label(code, keys.board.id)) entry["label"] = *word;
    return entry;
}

/// "   53  esc           quit".
std::string lineOf(KeyCode code, const Keys& keys) {
    const auto own = textsOf(code, keys.layout.own);
    std::string line = fmt::format("{:>5}  {:<14}", code,
                                   fmt::format("{}", fmt::join(textsOf(code, keys.layout.legends), " ")));
    if (!own.empty()) line += fmt::format("  \"{}\"", own.front());
    if (keys.learned.contains(code)) line += "  (learned)";
    return line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
}

/// Each code that a key of the board sends, in the board's order.
std::vector<KeyCode> codesOf(const tapcore::Board& board) {
    std::vector<KeyCode> codes;
    for (const auto& key : board.keys)
        if (key.keyCode && std::find(codes.begin(), codes.end(), *key.keyCode) == codes.end())
            codes.push_back(*key.keyCode);
    return codes;
}

}  // namespace

void requireWordForKey(std::string_view what, const std::string& word) {
    constexpr std::size_t longest = 24;
    const bool isClean = harmlessLine(word) == word && tapcore::trimmedWhiteSpace(word) == word;
    if (!isClean || tapcore::characterCount(word) > longest)
        throw UsageError(
            fmt::format("{}: {}: not a word for a key: at most {} characters, no blanks around "
                        "it, nothing that steers a terminal",
                        what, harmlessLine(word), longest));
}

void listKeys(const KeysOptions& options, const Environment& environment, bool isJson) {
    const Keys keys(options, environment);
    json entries = json::array();
    if (!isJson) print(fmt::format("{}, {}\n", title(keys.board), keys.layout.name));
    for (const KeyCode code : codesOf(keys.board)) {
        if (isJson) entries.push_back(toJson(code, keys));
        else print(lineOf(code, keys));
    }
    if (isJson)
        print(tapcore::jsonText({{"board", keys.board.id}, {"layout", keys.layout.id}, {"keys", entries}}));
}

void labelKey(const std::string& key, const std::string& word, const KeysOptions& options,
              const Environment& environment) {
    requireWordForKey("TEXT", word);
    const Keys keys(options, environment);
    std::set<KeyCode> codes = keysNamed(key, keys.layout);
    std::erase_if(codes, [&](KeyCode code) { return keys.board.key(code) == nullptr; });
    if (codes.empty())
        throw UsageError(fmt::format("KEY: {} has no such key: {}; see tappora keys", keys.board.id, key));
    changeFolderSettings(options.folder, environment, [&](FolderConfig& config) {
        for (const KeyCode code : codes) config.setLabel(code, keys.board.id, word);
    });
    for (const KeyCode code : codes)
        print(fmt::format(
            "{} on {}: {}\n", code, keys.board.id,
            word.empty() ? fmt::format("{}", fmt::join(textsOf(code, keys.layout.legends), " ")) : word));
}

void forgetKeys(const KeysOptions& options, const Environment& environment) {
    const Keys keys(options, environment);
    const std::size_t count = keys.config.learnedCount(keys.board.id);
    if (count == 0) return print(fmt::format("{}: nothing was learned\n", keys.board.id));
    changeFolderSettings(options.folder, environment,
                         [&](FolderConfig& config) { config.forgetLearned(keys.board.id); });
    print(fmt::format("{}: {} forgotten\n", keys.board.id, tapcore::counted(count, "key", "keys")));
}

}  // namespace tappora

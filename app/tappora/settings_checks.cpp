#include "app/tappora/settings_checks.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <vector>

#include "app/common/harmless_text.h"
#include "app/common/keyboard/key_remaps.h"
#include "app/common/keyboard/keyboard.h"
#include "app/common/program.h"
#include "app/common/system/resources.h"
#include "app/tappora/keys_tasks.h"
#include "core/foundation/integers.h"
#include "core/foundation/text_pieces.h"
#include "core/practice/letter_model.h"
#include "core/words/words.h"
#include "widgets/bundle.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;

using Names = std::vector<std::string>;

constexpr std::string_view labelStart = "labels.";
constexpr std::string_view learnedStart = "learned.";
constexpr std::string_view practiceLayoutStart = "practice.layout.";

/// Refuses a name that is not among those there are: "WHAT: no such KIND: NAME; use …".
void requireAmong(const Names& known, std::string_view what, std::string_view kind, const std::string& name) {
    if (std::find(known.begin(), known.end(), name) == known.end())
        throw UsageError(fmt::format("{}: {}", what, noSuch(kind, harmlessLine(name), known)));
}

Names textLanguages(const Environment& environment) {
    Names known = tapcore::Words::languages(resourceFolder(environment) / "Words");
    known.insert(known.begin(), "system");
    return known;
}

Names practiceLanguages(const Environment& environment) {
    return tapcore::LetterModel::available(resourceFolder(environment) / "Practice");
}

/// With keys by their codes; refuses keys that are not on the layout in force.
std::string remapsByCode(const std::string& value, const FolderOptions& folder,
                         const Environment& environment) {
    const tapcore::Store store = openStore(folder, environment);
    try {
        return remapsText(parseRemaps(value, Keyboards(environment, store).chosenLayout({})));
    } catch (const UsageError& error) {
        throw UsageError(fmt::format("{}: {}", remapsKey, error.what()));
    }
}

/// Refuses widgets and sizes that do not exist: "today week:medium".
void requireWidgets(const std::string& key, const std::string& value) {
    for (const std::string_view name : tapcore::pieces(value, ' ')) {
        if (name.empty()) continue;
        std::string_view size = name;
        const std::string_view kind = tapcore::takePiece(size, ':');
        Names kinds, sizes;
        for (const tapwidgets::Widget& widget : tapwidgets::bundle) {
            kinds.emplace_back(widget.name);
            if (widget.name != kind) continue;
            for (const auto family : widget.families) sizes.emplace_back(tapwidgets::families.of(family));
        }
        requireAmong(kinds, key, "widget", std::string(kind));
        if (!size.empty()) requireAmong(sizes, fmt::format("{}: {}", key, kind), "size", std::string(size));
    }
}

/// Refuses the name of a key that is not so many names and a code behind them: "planck/36".
void requireKeyName(const std::string& key, std::size_t start, std::size_t names, std::string_view form) {
    const auto parts = tapcore::pieces(std::string_view(key).substr(start), '/');
    const bool areNamed =
        std::none_of(parts.begin(), parts.end(), [](std::string_view part) { return part.empty(); });
    if (parts.size() != names + 1 || !areNamed || !tapcore::parseKeyCode(parts.back()))
        throw UsageError(fmt::format("{}: not {}", harmlessLine(key), form));
}

bool isBoard(const std::string& key) { return key == "board" || key == "keyboard.board"; }

bool isLayout(const std::string& key) {
    return key == "layout" || key == "keyboard.layout" || key.starts_with(practiceLayoutStart);
}

void requireKeyboard(const std::string& key, const std::string& value, const FolderOptions& folder,
                     const Environment& environment) {
    if (value == "auto" && (key == "board" || key == "layout" || key == "keyboard.layout")) return;
    const tapcore::Store store = openStore(folder, environment);
    const Keyboards keyboards(environment, store);
    if (isBoard(key)) (void)keyboards.board(key, value);
    else (void)keyboards.layout(key, value);
}

}  // namespace

std::string usableText(const std::string& key, const std::string& value, const FolderOptions& folder,
                       const Environment& environment) {
    if (key == "language") requireAmong(textLanguages(environment), key, "language", value);
    if (key == "practice.language") requireAmong(practiceLanguages(environment), key, "language", value);
    if (key.starts_with(practiceLayoutStart))
        requireAmong(practiceLanguages(environment), key, "language", key.substr(practiceLayoutStart.size()));
    if (key == "folder.path" && !fs::path(value).is_absolute())
        throw UsageError(key + ": " + value + ": not an absolute path; tappora folder set takes any");
    if (key == "widgets.shown") requireWidgets(key, value);
    if (key.starts_with(labelStart)) {
        requireKeyName(key, labelStart.size(), 1, "labels.BOARD/KEYCODE, such as labels.planck/36");
        requireWordForKey(key, value);
    }
    if (key.starts_with(learnedStart)) {
        requireKeyName(key, learnedStart.size(), 2,
                       "learned.BOARD/LAYOUT/KEYCODE, such as learned.planck/qwerty/12");
        requireWordForKey(key, value);
    }
    if (isBoard(key) || isLayout(key)) requireKeyboard(key, value, folder, environment);
    return key == remapsKey ? remapsByCode(value, folder, environment) : value;
}

}  // namespace tappora

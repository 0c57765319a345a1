#include "app/common/keyboard/keyboard.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "app/common/command_line/command_line.h"
#include "app/common/folder/data_folder.h"
#include "app/common/harmless_text.h"
#include "app/common/keyboard/own_layouts.h"
#include "app/common/keyboard/system_layout.h"
#include "app/common/program.h"
#include "app/common/system/resources.h"
#include "core/foundation/characters.h"
#include "core/keyboard/catalog.h"
#include "core/keyboard/layout_index.h"

namespace tappora {
namespace {

using tapcore::Board;
using tapcore::Catalog;
using tapcore::FolderConfig;
using tapcore::Layout;

constexpr const char* usualBoard = "full-size-ansi";
constexpr const char* usualLayout = "qwerty";
constexpr tapcore::KeyCode leftOfOneOnIso = 10;

bool isPath(std::string_view name) {
    return name.find('/') != std::string_view::npos || name.ends_with(".json");
}

/// What files of others say goes to the terminal: never what would steer it.
Board harmlessBoard(Board board) {
    for (std::string* text : {&board.id, &board.name, &board.maker}) *text = harmlessLine(*text);
    for (Board::Key& key : board.keys) key.id = harmlessLine(key.id);
    return board;
}

/// A mark that combines with the character before it gets the circle that Unicode has for this.
std::string harmlessLegend(const std::string& legend) {
    return (tapcore::isMark(legend) ? "◌" : "") + harmlessLine(legend);
}

tapcore::Legends harmlessLegends(tapcore::Legends legends) {
    for (auto& [code, legend] : legends)
        for (std::string& text : legend) text = harmlessLegend(text);
    return legends;
}

/// Puts what keys were seen to type in place of what is printed on them.
void learn(tapcore::Legends& legends, const tapcore::Legends& learned) {
    for (const auto& [code, texts] : learned) {
        std::vector<std::string>& legend = legends[code];
        if (legend.size() < texts.size()) legend.resize(texts.size());
        for (std::size_t level = 0; level < texts.size(); ++level)
            if (!texts[level].empty()) legend[level] = texts[level];
    }
}

}  // namespace

void addKeyboardOptions(CommandSyntax& command, KeyboardOptions& options) {
    command.option("--board", options.board, "The keyboard: an id or a board's file; see tappora boards")
        .type("BOARD");
    addLayoutOption(command, options);
}

void addLayoutOption(CommandSyntax& command, KeyboardOptions& options) {
    command
        .option("--layout", options.layout,
                "What its keys print: an id, a layout's file, or auto for the system's; see tappora layouts")
        .type("LAYOUT");
}

Keyboards::Keyboards(const Environment& environment, const tapcore::Store& store)
    : environment_(environment),
      store_(store),
      resources_(resourceFolder(environment)),
      settings_(Settings::read(environment)),
      config_(tapcore::FolderConfig::read(store.root)) {}

Board Keyboards::board(std::string_view what, const std::string& name) const {
    if (isPath(name)) return harmlessBoard(Catalog::readBoard(name));
    auto found = Catalog::bundledBoard(resources_, name);
    if (!found) throw UsageError(fmt::format("{}: no such board: {}; see tappora boards", what, name));
    return *std::move(found);
}

LegendSet Keyboards::layout(std::string_view what, const std::string& name) const {
    if (isPath(name)) return withBases(Catalog::readLayout(name));
    auto found = findLayout(name);
    if (!found) throw UsageError(fmt::format("{}: no such layout: {}; see tappora layouts", what, name));
    return withBases(std::move(*found));
}

std::vector<LegendSet> Keyboards::allLayouts() const {
    tapcore::FileProblems ignored;  // who asks for one of them by its id is told
    const auto catalog = Catalog::bundledLayouts(resources_).adding(ownLayouts(store_, resources_, ignored));
    std::vector<LegendSet> sets;
    for (const Layout& layout : catalog.layouts)
        sets.push_back({harmlessLine(layout.id), harmlessLine(layout.name),
                        harmlessLegends(catalog.legends(layout.id))});
    return sets;
}

std::optional<Layout> Keyboards::findLayout(const std::string& id) const {
    if (!own_) own_ = ownLayouts(store_, resources_, left_);
    const auto at =
        std::find_if(own_->begin(), own_->end(), [&](const Layout& layout) { return layout.id == id; });
    if (at != own_->end()) return *at;
    if (auto found = Catalog::bundledLayout(resources_, id)) return found;
    complainOf(std::exchange(left_, {}));
    return std::nullopt;
}

LegendSet Keyboards::withBases(Layout layout) const {
    std::vector<Layout> chain = {std::move(layout)};
    const auto isKnown = [&](const std::string& id) {
        return std::any_of(chain.begin(), chain.end(), [&](const Layout& known) { return known.id == id; });
    };
    while (chain.back().base && !isKnown(*chain.back().base)) {
        auto base = findLayout(*chain.back().base);
        if (!base) break;
        chain.push_back(std::move(*base));
    }
    return {harmlessLine(chain.front().id), harmlessLine(chain.front().name),
            harmlessLegends(tapcore::LayoutIndex(chain).legends(chain.front().id))};
}

tapcore::DayFile Keyboards::lastDay() const {
    const std::vector<tapcore::Day> days = store_.days();
    return days.empty() ? tapcore::DayFile() : store_.read(days.back());
}

Board Keyboards::chosenBoard(const KeyboardOptions& options) const {
    if (options.board) return board("--board", *options.board);
    const auto isOurs = [&](const std::string& id) {
        return Catalog::bundledBoard(resources_, id).has_value();
    };
    if (const auto set = settings_.text("keyboard.board")) {
        if (isPath(*set) || isOurs(*set)) return board("keyboard.board", *set);
        settings_.warnOf("keyboard.board", fmt::format("no such board: {}; see tappora boards", *set));
    }
    if (isOurs(config_.board)) return board("board", config_.board);
    const auto counted = lastDay().board;
    return board("board", counted && isOurs(*counted) ? *counted : usualBoard);
}

std::optional<Layout> Keyboards::systemLayout(const KeyboardOptions& options) const {
    const auto keyboard = systemKeyboard(systemSources(environment_));
    if (!keyboard) return std::nullopt;
    // Apple's ISO boards, and the bundled ones of that kind, count the key left of "1" as 10; others as 50.
    const bool isIso = chosenBoard(options).key(leftOfOneOnIso) != nullptr;
    return tappora::systemLayout(*keyboard, isIso ? IsoKeys::present : IsoKeys::absent,
                                 Catalog::bundledLayouts(resources_));
}

std::optional<std::string> Keyboards::layoutSet() const {
    auto set = settings_.text("keyboard.layout");
    if (!set || *set == "auto" || isPath(*set) || findLayout(*set)) return set;
    settings_.warnOf("keyboard.layout", fmt::format("no such layout: {}; see tappora layouts", *set));
    return std::nullopt;
}

LegendSet Keyboards::chosenLayout(const KeyboardOptions& options) const {
    LegendSet layout = layoutInForce(options);
    if (config_.labels.empty() && config_.learned.empty()) return layout;
    const std::string board = chosenBoard(options).id;
    FolderConfig config = config_;
    config.migrateLearned(layout.id);
    learn(layout.legends, harmlessLegends(config.learnedKeys(board, layout.id)));
    layout.own = harmlessLegends(config.labelsOf(board));
    return layout;
}

LegendSet Keyboards::layoutInForce(const KeyboardOptions& options) const {
    if (options.layout && *options.layout != "auto") return layout("--layout", *options.layout);
    const auto set = options.layout ? std::nullopt : layoutSet();
    if (set && *set != "auto") return layout("keyboard.layout", *set);
    if (!options.layout && !set && config_.layout != "auto" && findLayout(config_.layout))
        return layout("layout", config_.layout);
    if (auto system = systemLayout(options)) return withBases(std::move(*system));
    const auto counted = lastDay().layout;
    return layout("layout", counted && findLayout(*counted) ? *counted : usualLayout);
}

}  // namespace tappora

#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/common/folder/settings.h"
#include "app/common/system/environment.h"
#include "core/files/folder_config.h"
#include "core/files/store.h"
#include "core/keyboard/board.h"
#include "core/keyboard/layout.h"
#include "core/keyboard/legend_set.h"

namespace tappora {

class CommandSyntax;

/// The options of the commands that are about a keyboard.
struct KeyboardOptions {
    std::optional<std::string> board;   ///< --board
    std::optional<std::string> layout;  ///< --layout
};

void addKeyboardOptions(CommandSyntax& command, KeyboardOptions& options);
/// --layout alone, for a command that names keys but draws none.
void addLayoutOption(CommandSyntax& command, KeyboardOptions& options);

using tapcore::LegendSet;

/// Where boards and layouts are looked for: among the user's own and those that come with the program. Only
/// the files that are asked for are read.
class Keyboards {
  public:
    Keyboards(const Environment& environment, const tapcore::Store& store);

    /// The board that an option or argument names, by its id or by the path of its file (with a "/" or
    /// ".json"). UsageError naming both when no board has that id; what Catalog::readBoard throws for a file
    /// that is not a board.
    tapcore::Board board(std::string_view what, const std::string& name) const;

    /// The layout that an option or argument names, in the same ways.
    LegendSet layout(std::string_view what, const std::string& name) const;

    /// Every layout that is known, the user's own and the program's, by name; of two with one id, the user's.
    /// Own ones that cannot be read are left out.
    std::vector<LegendSet> allLayouts() const;

    /// The board that the options name, else the settings ("keyboard.board"), else those of the data folder,
    /// else the last day counted, else the one that has every key.
    tapcore::Board chosenBoard(const KeyboardOptions& options) const;

    /// The layout that the options name, else the settings ("keyboard.layout"), else those of the data
    /// folder. "auto", and nothing, mean the system's own, a bundled one or one made of what the system
    /// types (see `systemLayout`), else for that of the last day counted, else QWERTY. What the user taught
    /// of the chosen board's keys is in its legends, and the user's own words for them are beside those.
    LegendSet chosenLayout(const KeyboardOptions& options) const;

  private:
    LegendSet layoutInForce(const KeyboardOptions& options) const;
    std::optional<tapcore::Layout> findLayout(const std::string& id) const;
    std::optional<tapcore::Layout> systemLayout(const KeyboardOptions& options) const;
    /// What the settings say, when it can be used.
    std::optional<std::string> layoutSet() const;
    LegendSet withBases(tapcore::Layout layout) const;
    tapcore::DayFile lastDay() const;

    const Environment& environment_;
    const tapcore::Store& store_;
    std::filesystem::path resources_;
    Settings settings_;
    tapcore::FolderConfig config_;
    mutable std::optional<std::vector<tapcore::Layout>> own_;  ///< read when first looked for
    mutable tapcore::FileProblems left_;  ///< what of them could not be read; said when one is not found
};

}  // namespace tappora

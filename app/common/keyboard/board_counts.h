#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "app/common/folder/data_folder.h"
#include "app/common/folder/period.h"
#include "app/common/keyboard/keyboard.h"
#include "core/files/folder_config.h"
#include "core/keyboard/map_color.h"

namespace tappora {

/// The options shared by the commands that show a period's counts on a board.
struct BoardCountsOptions {
    FolderOptions folder;
    PeriodOptions dates;
    KeyboardOptions keyboard;
    std::vector<std::string> leaveOut;
    std::optional<std::string> color;
    bool dark = false;
    std::optional<std::string> output;
    bool json = false;
};

/// `printed` is what --json prints.
void addBoardCountsOptions(CommandSyntax& command, BoardCountsOptions& options, const std::string& printed);

/// A period's counts, the board and layout that they are laid over, and how that is to be shown.
struct BoardCounts {
    static constexpr std::int64_t usualDays = 30;

    Period period;
    tapcore::Board board;
    LegendSet layout;
    tapcore::Tally::KeyCounts counts;         ///< of all keys, also those left out
    std::set<tapcore::KeyCode> leftOutCodes;  ///< keys that the user wants left out
    tapcore::FolderConfig config;             ///< the folder's own, with the user's labels of keys
    tapcore::MapColor color;
    bool dark = false;
};

/// --color: the family of colours that heat is drawn in.
void addColorOption(CommandSyntax& command, std::optional<std::string>& color);

/// The colour that --color names, else the settings ("appearance.mapColor"), else the usual one. UsageError
/// for an invalid one.
tapcore::MapColor chosenColor(const std::optional<std::string>& option, const Environment& environment);

/// Reads the period's counts. Problems with files are complained of.
BoardCounts boardCounts(const BoardCountsOptions& options, const Environment& environment);

/// The board's maker and name.
std::string title(const tapcore::Board& board);
/// The period, the layout and the total, with dots between them or, in ASCII, commas.
std::string subtitle(const BoardCounts& on, std::int64_t total, bool unicode = true);
/// "1,234 presses of keys that this board does not have"; nothing for no presses.
std::optional<std::string> offBoardNote(std::int64_t presses);

/// "1,234 presses", "1 press".
std::string pressesText(std::int64_t count);

/// "4.2 %" or "42 %", of a total; "0 %" of 0.
std::string percentText(std::int64_t count, std::int64_t total);

}  // namespace tappora

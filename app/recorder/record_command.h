#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/common/folder/data_folder.h"
#include "app/common/system/environment.h"
#include "core/files/file_format.h"

namespace tappora {

class CommandSyntax;

/// What `tappora record` is asked for.
struct RecordOptions {
    FolderOptions folder;
    bool shared = false;                  ///< --shared
    std::optional<std::string> format;    ///< --format: the stored word of a file format
    std::optional<std::string> board;     ///< --board
    std::optional<std::string> layout;    ///< --layout
    bool isIso = false;                   ///< --iso
    bool noMouse = false;                 ///< --no-mouse
    bool taps = false;                    ///< --taps
    bool watch = false;                   ///< --watch
    std::vector<std::string> ignored;     ///< --ignore
    std::vector<std::string> remappers;   ///< --remapper
    std::optional<std::string> replay;    ///< --replay
    std::optional<std::string> starting;  ///< --starting
};

void addRecordOptions(CommandSyntax& command, RecordOptions& options);

/// Counts live until a signal ends it, or a recording with --replay.
void record(const RecordOptions& options, const Environment& environment);

}  // namespace tappora

#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/common/folder/data_folder.h"
#include "app/common/folder/folder_lock.h"
#include "app/common/system/environment.h"
#include "app/recorder/event_rules.h"
#include "app/recorder/event_source.h"
#include "app/recorder/folder_writer.h"

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

/// What counts by these options.
EventRules::Options rulesFor(const RecordOptions& options);

/// Which devices are listened to, and how.
SourceOptions sourceFor(const RecordOptions& options, const Environment& environment);

/// Opens the data folder as they choose it, made when missing, for writing into; `lock` takes its lock.
FolderWriter writerFor(const RecordOptions& options, const Environment& environment, const Tell& tell,
                       const LockForWriting& lock = lockForWriting);

}  // namespace tappora

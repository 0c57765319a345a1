#pragma once

#include <optional>
#include <string>

#include "app/common/program.h"
#include "core/counting/day.h"
#include "core/files/store.h"

namespace CLI {
class App;
}

namespace tappora {

/// The options that every command takes which reads the data folder.
struct FolderOptions {
    std::optional<std::string> folder;  ///< --folder
    std::optional<std::string> today;   ///< --today
};

void addFolderOptions(CLI::App& command, FolderOptions& options);

/// Opens the data folder: the one named by --folder or TAPPORA_FOLDER, else the default one. A folder that
/// was named must exist. Failure says why a folder cannot be read.
tapcore::Store openStore(const FolderOptions& options, const Environment& environment);

/// The day given with --today, else the environment's. UsageError for a text that is no day.
tapcore::Day today(const FolderOptions& options, const Environment& environment,
                   const tapcore::Calendar& calendar);

/// The hour that `today` has reached: 23 for a day that is not the environment's own.
std::int64_t hourReached(const tapcore::Day& today, const Environment& environment,
                         const tapcore::Calendar& calendar);

/// The day that an option or argument names: UsageError naming both when it is none.
tapcore::Day parseDay(std::string_view what, std::string_view text);

/// Prints each problem as a warning: "PATH:LINE: WHY".
void complainOf(const tapcore::FileProblems& problems);

}  // namespace tappora

#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "app/common/folder/folder_lock.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "core/counting/day.h"
#include "core/files/store.h"

namespace tappora {

class CommandSyntax;
class Settings;

/// The options that every command takes which reads the data folder.
struct FolderOptions {
    std::optional<std::string> folder;  ///< --folder
    std::optional<std::string> today;   ///< --today
};

void addFolderOptions(CommandSyntax& command, FolderOptions& options);

/// The setting that chooses the data folder.
inline constexpr std::string_view folderKey = "folder.path";

/// Where the data folder is, and what decided it.
struct FolderChoice {
    enum class Rule { option, environment, setting, cloud, earlier, usual };

    std::filesystem::path root;
    Rule rule = Rule::usual;

    /// The rule in words: "named by --folder".
    std::string_view why() const;
    /// Whether the user named this folder, which must then be there.
    bool isNamed() const {
        return rule == Rule::option || rule == Rule::environment || rule == Rule::setting;
    }
};

/// --folder, else TAPPORA_FOLDER, else the setting "folder.path", else the app's folder in iCloud Drive, else
/// the folder of an earlier version, else ~/Documents/Tappora.
FolderChoice chooseFolder(const FolderOptions& options, const Environment& environment);

/// The same without --folder and with settings that were read already.
FolderChoice chooseFolder(const Settings& settings, const Environment& environment);

/// Opens the data folder for reading, in the format of its settings; of a shared one all machines are read.
/// Makes nothing. A folder that was named must exist. Failure says why a folder cannot be read.
tapcore::Store openStore(const FolderOptions& options, const Environment& environment);

/// The data folder opened for writing, with its writing lock. Waits for the lock and holds it. Makes the
/// folder when it is missing and nobody named it; a folder that was named must exist. In a shared folder, or
/// with `share`, it finds this machine's sub-folder by its marker, or makes one; the machine's id is kept in
/// the settings. UsageError, before anything is made, when --today is not a day. filesystem_error when the
/// folder's settings, which name the format, cannot be read. Warns once of what is written but not yet safe
/// from a power cut.
struct LockedStore {
    LockedStore(const FolderOptions& options, const Environment& environment, bool share = false,
                const Tell& tell = complain, const LockForWriting& lockForWriting = tappora::lockForWriting);

    FolderLock lock;
    tapcore::Store store;
};

/// The day given with --today, else the environment's. UsageError for a text that is not a day.
tapcore::Day today(const FolderOptions& options, const Environment& environment,
                   const tapcore::Calendar& calendar);

/// How many hours of `today` have passed on the clock, 9.5 at half past nine; 24 for a day that is not the
/// environment's own.
double hoursPassed(const tapcore::Day& today, const Environment& environment,
                   const tapcore::Calendar& calendar);

/// The day that an option or argument names: UsageError naming both when it is invalid.
tapcore::Day parseDay(std::string_view what, std::string_view text);

/// The format that an option names: UsageError naming both when it is unknown.
tapcore::FileFormat parseFormat(std::string_view what, std::string_view text);

/// Tells each problem, once: "PATH:LINE: WHY".
void complainOf(const tapcore::FileProblems& problems, const Tell& tell = complain);

/// Tells the problems behind an answer. Where the answer is empty since nothing could be read, the first
/// problem is a Failure.
void requireAnswer(const tapcore::FileProblems& problems, bool isEmpty);

/// "PATH:LINE: WHY".
std::string described(const tapcore::FileProblem& problem);

}  // namespace tappora

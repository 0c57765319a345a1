#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace tappora {

struct Environment;

/// Who asks for the setting up, and what is there for it. Places have no symbolic links in them, except for
/// what does not exist yet.
struct SetupWorld {
    std::string user;
    bool isRoot = false;
    std::filesystem::path home;      ///< empty when it is not known
    std::filesystem::path folder;    ///< the data folder
    std::filesystem::path settings;  ///< Tappora's own folders of the user: for settings,
    std::filesystem::path shared;    ///< the widgets' file,
    std::filesystem::path state;     ///< and what is not in the data folder yet
    std::filesystem::path config;    ///< the user's folder of all programs' settings
    std::filesystem::path tappora;   ///< the programs
    std::filesystem::path recorder;
    std::optional<std::filesystem::path> widgets;  ///< nothing where the desktop package is missing
    std::optional<std::filesystem::path> tray;
    std::string serviceText;  ///< the system service that comes with the program
    std::string rootBy;       ///< the program that gets root's rights; "" when it is root that asks
    bool hasWayToRoot = true;
};

/// Failure says what is missing: a home, the recorder, the program's resources. `rootBy` is what the user
/// named.
SetupWorld setupWorld(const std::optional<std::string>& rootBy, const Environment& environment);

// What must be so before anything is changed. Failure says what is not, and what to do.

/// The folders that the recorder writes are the user's own, or can be made.
void requireOwnFolders(const SetupWorld& world);
/// systemd runs, for the machine or for the user's session.
void requireSystemd();
void requireUserSystemd();
/// Only root can replace the recorder.
void requireSafeRecorder(const SetupWorld& world);
/// There is a way to root's rights.
void requireRoot(const SetupWorld& world);

}  // namespace tappora

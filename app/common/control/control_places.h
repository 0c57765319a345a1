#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "app/common/system/environment.h"

namespace tappora {

/// A directory in which recorders of a user have their sockets.
struct ControlPlace {
    std::filesystem::path directory;
    unsigned user = 0;  ///< whose it must be
};

/// All in which a recorder that this user may ask can be, whatever environment it was started in; most are
/// not there. With sudo, those of the user who called it too.
std::vector<ControlPlace> controlPlaces(const Environment& environment);

/// The one for a recorder started now, made for its user alone: the directory that systemd made for the
/// service ($RUNTIME_DIRECTORY), $XDG_RUNTIME_DIR/tappora, /run/user/UID/tappora, or /tmp/tappora-UID.
/// Failure, naming it, when it is not the user's own.
std::filesystem::path madeControlPlace(const Environment& environment);

/// The file name of the socket of the recorder into a data folder, and of what else belongs to it alone.
std::string socketName(const std::filesystem::path& dataFolder);
bool isSocketName(std::string_view name);
/// By what two recorders of a user differ, the same from start to start.
std::string recorderId(const std::filesystem::path& dataFolder);

}  // namespace tappora

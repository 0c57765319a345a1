#pragma once

#include <filesystem>
#include <string>

#include "app/common/folder/folder_lock.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"

namespace tappora {

class Settings;

/// How this machine is told from others that share a data folder.
struct Machine {
    std::string id;    ///< stable; derived from the system's, which it does not give away
    std::string name;  ///< as its user knows it

    /// The id kept in the settings as "machine.id", else one made of `systemID`, a file like /etc/machine-id,
    /// else, where that is missing, one by chance; then it is set in `settings`, for the caller to store. The
    /// name is the setting "machine.name", else the host's.
    static Machine of(Settings& settings, const std::filesystem::path& systemID = "/etc/machine-id");

    /// This machine by the user's settings, in which the id is stored when it is new.
    static Machine kept(const Environment& environment, const Tell& tell = complain,
                        const LockForWriting& lockForWriting = tappora::lockForWriting);
};

}  // namespace tappora

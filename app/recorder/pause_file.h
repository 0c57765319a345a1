#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "app/common/control/recorder_status.h"
#include "app/common/system/environment.h"

namespace tappora {

/// Where a recorder keeps its pause over a restart: in the user's state directory, a file for each data
/// folder. Nothing where the user has no home.
std::optional<std::filesystem::path> pauseFile(const Environment& environment,
                                               const std::filesystem::path& dataFolder);

/// A pause as it was kept.
struct KeptPause {
    std::optional<Pause> pause{};
    /// Why it is not known when the pause ends; "" when it is. Counting what nobody may count would be worse
    /// than not counting: it is then a pause without an end.
    std::string problem{};
};

/// Reads a pause, with distrust: a file that is no such pause, or lasts longer than one can, is a pause from
/// `now` without an end.
KeptPause readPauseFile(const std::filesystem::path& path, tapcore::Instant now);

/// Keeps a pause, or forgets it when there is none. Failure, naming it, when it cannot be written.
void writePauseFile(const std::filesystem::path& path, const std::optional<Pause>& pause);

}  // namespace tappora

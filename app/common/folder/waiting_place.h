#pragma once

#include <filesystem>
#include <optional>
#include <vector>

namespace tappora {

struct Environment;

// Hours that are not in a data folder yet wait in a folder of the state directory, "waiting/DIGEST" below
// $XDG_STATE_HOME/tappora: one for each data folder, told apart by its path, which the file "folder" in it
// holds.

/// Where the hours of a data folder wait; it need not exist. Nothing where no state directory is known.
std::optional<std::filesystem::path> waitingPlace(const Environment& environment,
                                                  const std::filesystem::path& root);

/// Makes that folder, and gives it. Failure where no state directory is known, and filesystem_error with the
/// path.
std::filesystem::path madeWaitingPlace(const Environment& environment, const std::filesystem::path& root);

/// The data folders that hours wait for, or did.
std::vector<std::filesystem::path> foldersWaitedFor(const Environment& environment);

}  // namespace tappora

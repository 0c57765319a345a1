#pragma once

#include <filesystem>

#include "app/recorder/recording.h"

namespace tappora {

/// Reads a file that evemu-record or libinput record wrote. Failure names the file, and the line, of what
/// cannot be read: a missing file, another kind of file, a recording without events, a damaged line,
/// more than 256 MB.
Recording readRecording(const std::filesystem::path& path);

}  // namespace tappora

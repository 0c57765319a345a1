#pragma once

#include "app/common/system/environment.h"
#include "app/recorder/record_options.h"

namespace tappora {

/// Counts live until a signal ends it, or a recording with --replay.
void record(const RecordOptions& options, const Environment& environment);

/// Counts what is typed now, until a signal ends it. The folder is made once there are devices, so that a
/// start that is refused leaves nothing behind.
void recordLive(const RecordOptions& options, const Environment& environment);

/// Counts a recording, stores it and prints what it counted.
void replayFile(const RecordOptions& options, const Environment& environment);

}  // namespace tappora

#pragma once

#include "app/common/folder/data_folder.h"
#include "app/common/system/environment.h"

namespace tappora {

/// Prints the widgets' snapshot as a line of JSON, and another line whenever it has changed: because of the
/// counts, the settings, the hour or the day. Ends when standard output has no reader any more, and on
/// SIGINT, SIGTERM and SIGHUP. A failure at the start is thrown; a later one is told once, and the next
/// change is another try. A slow reader is not waited for: it misses snapshots, and then gets the current
/// one.
void watchSnapshot(const FolderOptions& options, const Environment& environment);

}  // namespace tappora

#pragma once

#include "app/common/folder/data_folder.h"
#include "app/common/system/environment.h"

namespace tappora {

/// Prints the widgets' snapshot as a line of JSON, and a new line whenever it has changed: with the counts,
/// the settings, the hour or the day. Ends when nobody reads it any more, and on SIGINT, SIGTERM and SIGHUP.
/// What fails later than at first is complained of once, and tried again with the next change. It waits for
/// no reader: one that does not read misses snapshots, and gets the current one when it goes on.
void watchSnapshot(const FolderOptions& options, const Environment& environment);

}  // namespace tappora

#pragma once

#include <filesystem>

#include "app/common/folder/data_folder.h"
#include "app/common/system/environment.h"
#include "core/widget/widget_snapshot.h"

namespace tappora {

/// Where programs of this user share files: no containers, and for application support the user's data
/// directory, $XDG_DATA_HOME, else ~/.local/share.
tapcore::WidgetSnapshot::SharedFolders sharedFolders(const Environment& environment);

/// The file that the widgets read. Failure when there is neither a data directory nor a home.
std::filesystem::path widgetFile(const Environment& environment);

/// What the widgets are to show, from the data folder and the settings: today, the seven days that end with
/// it, and the heat map of the last 30 on the user's board, in the user's language and colour. `problems`
/// gets those of files that were passed over; it may be null.
tapcore::WidgetSnapshot widgetSnapshot(const FolderOptions& options, const Environment& environment,
                                       tapcore::FileProblems* problems);

/// Whether it has no keystroke: with problems of reading, that is no answer.
bool showsNothing(const tapcore::WidgetSnapshot& snapshot);

/// Writes it whole to the widgets' file, unless that holds the same already. Failure, naming the file, when
/// it cannot be written.
void writeWidgetFile(const tapcore::WidgetSnapshot& snapshot, const Environment& environment);

}  // namespace tappora

#include "app/common/command_line/command_line.h"
#include "app/common/command_line/companion.h"
#include "app/common/folder/data_folder.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/common/widget/shown_pause.h"
#include "app/common/widget/widget_file.h"
#include "app/tappora/commands.h"
#include "app/tappora/widget_timeline.h"
#include "app/tappora/widget_watch.h"

namespace tappora {
namespace {

tapcore::WidgetSnapshot snapshotNow(const FolderOptions& folder, const Environment& environment) {
    tapcore::FileProblems problems;
    auto snapshot = widgetSnapshot(folder, environment, &problems);
    requireAnswer(problems, showsNothing(snapshot));
    return snapshot;
}

}  // namespace

void widgetCommand(CommandLine& line, const Environment& environment) {
    FolderOptions folder;
    bool watch = false;
    line.describe(
        "Print what the desktop widgets show, as one line of JSON, for a bar or a widget host of your own",
        "tappora widget --watch");
    line.flag("--watch", watch, "Keep running and print a line after each change");
    addFolderOptions(line, folder);
    line.task(
        "write", "Write the file that the widgets read", "tappora widget write",
        [&](auto& task) { addFolderOptions(task, folder); },
        [&] { writeWidgetFile(snapshotNow(folder, environment), environment); });
    line.task(
        "render", "Draw every widget as a picture, in all sizes and appearances",
        "tappora widget render -o pictures", [](auto& task) { task.passOnWhatFollows(); },
        [&] { becomePainter("widget", line.passedOn()); });
    line.task(
        "timeline", "Print what each widget shows, and until when, as JSON", "tappora widget timeline",
        [](auto&) {}, [&] { printTimelines(environment); });
    line.perform([&] {
        if (watch) watchSnapshot(folder, environment);
        else print(widgetLine(snapshotNow(folder, environment), environment) + "\n");
    });
}

}  // namespace tappora

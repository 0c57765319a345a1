#include "app/common/command_line.h"
#include "app/common/companion.h"
#include "app/common/data_folder.h"
#include "app/common/program.h"
#include "app/common/widget_file.h"
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
    if (!line.arguments().empty() && line.arguments().front() == "render")
        becomePainter("widget", {line.arguments().begin() + 1, line.arguments().end()});
    FolderOptions folder;
    bool watch = false;
    line.describe(
        "What the desktop widgets show, as one line of JSON, for a bar or a widget host of your own.",
        "tappora widget --watch");
    line.flag("--watch", watch, "Go on, with a new line whenever it has changed");
    addFolderOptions(line, folder);
    CommandSyntax write =
        line.task("write", "Write it to the file that the widgets read", "tappora widget write");
    addFolderOptions(write, folder);
    CommandSyntax render = line.task("render", "Every widget as a picture, in all sizes and appearances",
                                     "tappora widget render -o pictures");
    addFolderOptions(render, folder);
    const CommandSyntax timeline = line.task(
        "timeline", "What each widget is given to show, and until when, as JSON", "tappora widget timeline");
    line.parse();
    if (render.isChosen()) throw UsageError("render: stands first, before its options");

    if (timeline.isChosen()) return printTimelines(environment);
    if (watch) return watchSnapshot(folder, environment);
    const tapcore::WidgetSnapshot snapshot = snapshotNow(folder, environment);
    if (!write.isChosen()) return print(snapshot.data() + "\n");
    writeWidgetFile(snapshot, environment);
}

}  // namespace tappora

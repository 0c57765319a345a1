#include "app/common/command_line.h"
#include "app/common/data_folder.h"
#include "app/common/program.h"
#include "app/common/widget_file.h"
#include "app/tappora/commands.h"
#include "app/tappora/companion.h"
#include "app/tappora/widget_timeline.h"
#include "app/tappora/widget_watch.h"

namespace tappora {
namespace {

tapcore::WidgetSnapshot snapshotNow(const FolderOptions& folder, const Environment& environment) {
    tapcore::FileProblems problems;
    auto snapshot = widgetSnapshot(folder, environment, &problems);
    complainOf(problems);
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
    line.add_flag("--watch", watch, "Go on, with a new line whenever it has changed");
    addFolderOptions(line, folder);
    CLI::App& write =
        line.addSubcommand("write", "Write it to the file that the widgets read", "tappora widget write");
    addFolderOptions(write, folder);
    const CLI::App& render =
        line.addSubcommand("render", "Every widget as a picture, in all sizes and appearances",
                           "tappora widget render -o pictures");
    const CLI::App& timeline = line.addSubcommand(
        "timeline", "What each widget is given to show, and until when, as JSON", "tappora widget timeline");
    line.require_subcommand(0, 1);
    line.parse();
    if (watch && !line.get_subcommands().empty())
        throw UsageError("--watch: not together with " + line.get_subcommands().front()->get_name());
    if (render.parsed()) throw UsageError("render: stands first, before its options");

    if (timeline.parsed()) return printTimelines(environment);
    if (watch) return watchSnapshot(folder, environment);
    const tapcore::WidgetSnapshot snapshot = snapshotNow(folder, environment);
    if (!write.parsed()) return print(snapshot.data() + "\n");
    writeWidgetFile(snapshot, environment);
}

}  // namespace tappora

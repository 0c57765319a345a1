#include "app/recorder/record_options.h"

#include <utility>

#include "app/common/command_line/command_line.h"
#include "core/files/store.h"

namespace tappora {
namespace {

WritingOptions writingFor(const RecordOptions& options) {
    WritingOptions writing{
        .folder = options.folder,
        .format = options.format ? std::optional(parseFormat("--format", *options.format)) : std::nullopt,
        .board = options.board,
        .layout = options.layout};
    if (options.replay)  // what a recording holds is over
        writing.rules = [](const Environment& now) { return QuietRules::now(now).afterwards(); };
    return writing;
}

/// An ISO board is one by its name: "macbook-iso".
BoardShape shapeOf(const RecordOptions& options) {
    const bool isIso = options.isIso || (options.board && options.board->ends_with("-iso"));
    return isIso ? BoardShape::iso : BoardShape::ansi;
}

}  // namespace

void addRecordOptions(CommandSyntax& command, RecordOptions& options) {
    command.describe("Count what is typed and clicked, hour by hour: live, until Ctrl+C, or from a recording",
                     "tappora record --replay typing.evemu --starting 2026-09-20T09:00:00");
    addFolderOptions(command, options.folder);
    command.flag("--shared", options.shared,
                 "Write to a sub-folder of this machine's own, for a folder that several machines share");
    command
        .option("--format", options.format,
                "The format of the day files, org or markdown; the folder's own when not given")
        .type("FORMAT");
    command.option("--board", options.board, "The board to name in the day files").type("NAME");
    command.option("--layout", options.layout, "The layout to name in the day files").type("NAME");
    command.flag("--iso", options.isIso,
                 "Count an ISO board, with a key between left shift and Z; implied by --board NAME-iso");
    command.flag("--no-mouse", options.noMouse, "Count only keys");
    command.flag("--taps", options.taps, "Count taps on a touchpad as clicks");
    command.flag("--watch", options.watch,
                 "Print for each press and click whether it counts, and if not, why");
    command.option("--ignore", options.ignored, "Ignore the device of this name").type("NAME");
    command
        .option("--remapper", options.remappers,
                "Count the virtual keyboard of a key remapper, with NAME in the device's name")
        .type("NAME");
    Option replay =
        command.option("--replay", options.replay, "Count a recording of evemu-record or libinput record")
            .type("FILE");
    Option starting =
        command.option("--starting", options.starting, "The local time of the recording's first event")
            .type("YYYY-MM-DDTHH:MM:SS");
    replay.needs(starting);
    starting.needs(replay);
}

EventRules::Options rulesFor(const RecordOptions& options) {
    return {.countsMouse = !options.noMouse, .board = shapeOf(options), .remappers = options.remappers};
}

SourceOptions sourceFor(const RecordOptions& options, const Environment& environment) {
    return {.seat = environment.variable("XDG_SEAT").value_or("seat0"),
            .ignored = options.ignored,
            .tapsClick = options.taps};
}

FolderWriter writerFor(const RecordOptions& options, const Environment& environment, const Tell& tell,
                       const LockForWriting& lock) {
    WritingOptions writing = writingFor(options);
    const tapcore::Store store = LockedStore(options.folder, environment, options.shared, tell, lock).store;
    return {store, std::move(writing), environment, tell};
}

}  // namespace tappora

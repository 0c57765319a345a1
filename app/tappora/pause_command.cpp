// Pausing, and ending the pause.

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/common/command_line/command_line.h"
#include "app/common/control/pause_time.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/tappora/commands.h"
#include "app/tappora/recorder_facts.h"

namespace tappora {
namespace {

/// Tells what each recorder has done, by `tell` of its status, and fails when there is none or one has not.
void tellOf(const std::vector<RecorderReply>& replies, const Asking& asking,
            const std::function<void(const RecorderStatus&)>& tell) {
    complainOf(replies);
    const auto recorders = answersOf(replies);
    for (const RecorderStatus& status : recorders) {
        if (!status.pauseProblem.empty()) complain(status.pauseProblem);
        tell(status);
    }
    if (haveRefused(replies)) throw Failure("recorder", "not all did what they were asked");
    if (!recorders.empty()) return;
    complain("nothing is counted: " + noRecorder(asking));
    throw NotCounting();
}

void addFolder(CommandLine& line, std::optional<std::string>& folder) {
    line.option("--folder", folder, "Only the recorder into this data folder").type("DIR");
}

}  // namespace

void pauseCommand(CommandLine& line, const Environment& environment) {
    std::optional<std::string> folder;
    std::vector<std::string> words;
    line.describe("Count nothing for a while, or until tappora resume; at most 31 days", "tappora pause 30m");
    line.option("WHEN", words, "How long: 30m, 2h or until 14:00");
    addFolder(line, folder);
    line.parse();

    const Asking asking{.folder = folder};
    const auto until = pauseEnd(words, environment.now, environment.calendar);
    tellOf(pauseRecorders(until, asking, environment), asking, [&](const RecorderStatus& status) {
        if (status.pause) print(pauseLine(*status.pause, environment));
    });
}

void resumeCommand(CommandLine& line, const Environment& environment) {
    std::optional<std::string> folder;
    line.describe("End a pause of counting", "tappora resume");
    addFolder(line, folder);
    line.parse();

    const Asking asking{.folder = folder};
    tellOf(resumeRecorders(asking, environment), asking, [&](const RecorderStatus& status) {
        print(status.isCounting() ? "Counting again.\n" : factsOf(status, environment));
    });
}

}  // namespace tappora

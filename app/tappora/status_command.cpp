#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "app/common/command_line/command_line.h"
#include "app/common/command_line/records_json.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/tappora/commands.h"
#include "app/tappora/recorder_facts.h"

namespace tappora {
namespace {

nlohmann::json statusJson(const std::vector<RecorderStatus>& recorders) {
    nlohmann::json list = nlohmann::json::array();
    for (const RecorderStatus& status : recorders) list.push_back(toJson(status));
    return {{"counts", areCounting(recorders)}, {"recorders", list}};
}

std::string statusText(const std::vector<RecorderStatus>& recorders, const Asking& asking,
                       const Environment& environment) {
    if (recorders.empty())
        return "Nothing is counted: " + noRecorder(asking) +
               ".\n\n"
               "  tappora setup             has a recorder start by itself\n"
               "  tappora record            counts from now on, until you stop it\n"
               "  tappora record --help     says what it needs\n";
    std::string text;
    for (const RecorderStatus& status : recorders)
        text += (text.empty() ? "" : "\n") + factsOf(status, environment);
    return text;
}

}  // namespace

void statusCommand(CommandLine& line, const Environment& environment) {
    std::optional<std::string> folder;
    bool json = false;
    line.describe(
        "Print whether the recorder counts, what it listens to, what it may not read, and what it stored; "
        "the exit status is 0 when it counts and 3 when it does not",
        "tappora status");
    line.flag("--json", json, "Print it as JSON");
    line.option("--folder", folder, "Only of the recorder into this data folder").type("DIR");
    line.parse();

    const Asking asking{.folder = folder};
    const auto replies = askStatus(asking, environment);
    const auto recorders = answersOf(replies);
    complainOf(replies);
    if (haveRefused(replies)) throw Failure("status", "not known of all recorders");
    print(json ? jsonText(statusJson(recorders)) : statusText(recorders, asking, environment));
    if (!areCounting(recorders)) throw NotCounting();
}

}  // namespace tappora

#include "app/tappora/recorder_facts.h"

#include <fmt/format.h>

#include <algorithm>

#include "app/common/harmless_text.h"
#include "app/common/notices.h"
#include "app/common/program.h"
#include "app/common/system/moment.h"
#include "core/foundation/integers.h"

namespace tappora {
namespace {

/// The facts of a recorder as lines.
class Facts {
  public:
    explicit Facts(const Environment& environment) : environment_(environment) {}

    void headline(const RecorderStatus& status);
    void devices(const DeviceList& devices);
    void storing(const RecorderStatus& status);
    void problems(const RecorderStatus& status);
    void row(std::string_view title, std::string_view value) {
        text += fmt::format("{:<12} {}\n", title, harmlessLine(value));
    }
    std::string clock(tapcore::Instant moment) const {
        return clockText(moment, environment_.now, environment_.calendar);
    }

    std::string text;

  private:
    const Environment& environment_;
};

std::string counted(std::int64_t count, std::string_view one, std::string_view many) {
    return tapcore::counted(static_cast<std::size_t>(count), one, many);
}

void Facts::headline(const RecorderStatus& status) {
    if (status.pause) text += pauseLine(*status.pause, environment_);
    else if (status.isLocked) text += "Nothing is counted while the session is locked.\n";
    else if (!status.devices.hasKeyboard()) text += fmt::format("{}.\n", noKeyboard);
    else text += "Counting.\n";
}

void Facts::devices(const DeviceList& devices) {
    for (const auto& device : devices.read) row("Listens to", device.name);
    for (const auto& device : devices.unreadable) row("Cannot read", device.name + ": " + device.why);
    const auto& unreadable = devices.unreadable;
    if (std::any_of(unreadable.begin(), unreadable.end(),
                    [](const auto& device) { return device.isForbidden; }))
        row("To allow it", devicesNotice.remedy);
}

void Facts::storing(const RecorderStatus& status) {
    if (const auto& stored = status.stored)
        row("Last stored",
            fmt::format("{}: {}, {}", clock(stored->at), counted(stored->presses, "press", "presses"),
                        counted(stored->clicks, "click", "clicks")));
    else row("Last stored", "nothing yet");
    if (const auto& unstored = status.unstored)
        row("Not stored", fmt::format("{}: {}", unstored->what, unstored->why));
}

void Facts::problems(const RecorderStatus& status) {
    if (const auto& dropped = status.dropped)
        row("Not seen", fmt::format("some presses, {}, last at {}: the machine was too busy",
                                    counted(dropped->times, "time", "times"), clock(dropped->last)));
    if (status.pause) row("Paused since", clock(status.pause->since));
    if (!status.pauseProblem.empty()) row("Pause", status.pauseProblem);
    if (!status.lockProblem.empty()) row("Locked", "not known: " + status.lockProblem);
    if (!status.lockProblem.empty()) row("To know it", lockNotice.remedy);
}

}  // namespace

std::string pauseLine(const Pause& pause, const Environment& environment) {
    if (!pause.until) return "Paused until tappora resume: nothing is counted.\n";
    return fmt::format("Paused until {}: nothing is counted.\n",
                       clockText(*pause.until, environment.now, environment.calendar));
}

std::string factsOf(const RecorderStatus& status, const Environment& environment) {
    Facts facts(environment);
    facts.headline(status);
    facts.row("Folder", status.folder.string());
    facts.row("Since", facts.clock(status.since));
    facts.devices(status.devices);
    facts.storing(status);
    facts.problems(status);
    return facts.text;
}

std::vector<RecorderStatus> answersOf(const std::vector<RecorderReply>& replies) {
    std::vector<RecorderStatus> answers;
    for (const RecorderReply& reply : replies)
        if (reply.outcome == RecorderReply::Outcome::answered) answers.push_back(reply.status);
    return answers;
}

void complainOf(const std::vector<RecorderReply>& replies) {
    for (const RecorderReply& reply : replies)
        if (reply.outcome != RecorderReply::Outcome::answered)
            complain(reply.socket.string() + ": " + reply.why);
}

bool haveRefused(const std::vector<RecorderReply>& replies) {
    using Outcome = RecorderReply::Outcome;
    return std::any_of(replies.begin(), replies.end(), [](const RecorderReply& reply) {
        return reply.outcome == Outcome::silent || reply.outcome == Outcome::refused;
    });
}

std::string noRecorder(const Asking& asking) {
    return "no recorder " + (asking.folder ? "counts into " + asking.folder->string() : "runs");
}

bool areCounting(const std::vector<RecorderStatus>& recorders) {
    return !recorders.empty() && std::all_of(recorders.begin(), recorders.end(),
                                             [](const auto& status) { return status.isCounting(); });
}

}  // namespace tappora

#include "app/recorder/control_desk.h"

#include <poll.h>

#include <chrono>
#include <utility>

#include "app/common/control/control_places.h"
#include "app/common/control/pause_time.h"
#include "app/recorder/named_failure.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;
using Kind = ControlQuestion::Kind;

bool isReadable(int file) {
    pollfd waiting{.fd = file, .events = POLLIN, .revents = 0};
    return ::poll(&waiting, 1, 0) == 1;
}

}  // namespace

ControlDesk::ControlDesk(fs::path folder, const Environment& environment, PauseSwitch& pauses,
                         PauseKeeper& keeper, std::function<RecorderStatus()> status, const Tell& tell)
    : folder_(std::move(folder)),
      environment_(environment),
      pauses_(pauses),
      keeper_(keeper),
      status_(std::move(status)),
      server_(socketName(folder_), [this](std::string_view line) { return answer(line); }),
      listening_(tell, "tappora status and tappora pause do not find this recorder: ") {}

void ControlDesk::lookAgain() {
    if (server_.isListening()) return;
    listening_.run([&] { namingFailure([&] { server_.listenIn(madeControlPlace(environment_)); }); });
}

void ControlDesk::serveUntil(int file) {
    while (true) {
        keeper_.follow(hostNow());
        if (isReadable(file)) return;
        if (setAlarm()) server_.serveUntil({file, pauses_.descriptor(), pauseEnd_.descriptor()});
    }
}

/// Has it ring when the pause ends by itself; false when the clock was set meanwhile.
bool ControlDesk::setAlarm() const {
    constexpr std::chrono::days longTime{1};
    const auto pause = pauses_.state().pause;
    return pauseEnd_.set(pause && pause->until ? *pause->until : hostNow() + longTime);
}

std::string ControlDesk::answer(std::string_view line) {
    try {
        return lineOf(answerTo(readQuestion(line)));
    } catch (const tapcore::JsonError& error) {
        return lineOf(ControlAnswer{.refusal = std::string("not understood: ") + error.what()});
    }
}

ControlAnswer ControlDesk::answerTo(const ControlQuestion& question) {
    const tapcore::Instant now = hostNow();
    if (question.kind == Kind::pause && question.until)
        if (std::string why = objectionTo(*question.until, now); !why.empty()) return {.refusal = why};
    const auto before = pauses_.state().pause;
    if (question.kind == Kind::pause)
        pauses_.pause({.since = before ? before->since : now, .until = question.until});
    if (question.kind == Kind::resume) pauses_.resume();
    keeper_.follow(now);
    (void)setAlarm();  // it rings at once when the clock was set
    RecorderStatus status = status_();
    status.folder = folder_;
    status.pauseProblem = keeper_.problem();
    return {.status = std::move(status)};
}

}  // namespace tappora

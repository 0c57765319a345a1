#include "app/recorder/pause_keeper.h"

#include <fmt/format.h>

#include <exception>
#include <utility>

#include "app/common/notices.h"
#include "app/recorder/pause_file.h"

namespace tappora {

PauseKeeper::PauseKeeper(PauseSwitch& pauses, PauseFiles files,
                         std::function<std::string(tapcore::Instant moment)> describe, Tell tell)
    : pauses_(pauses),
      files_(std::move(files)),
      describe_(std::move(describe)),
      tell_(std::move(tell)),
      showing_(tell_, "the widgets do not know of the pause: ") {}

void PauseKeeper::restore(tapcore::Instant now) {
    if (!files_.kept) return;
    KeptPause kept = readPauseFile(*files_.kept, now);
    written_ = kept.pause;
    if (!kept.pause) return;
    pauses_.pause(*kept.pause);
    if (kept.problem.empty()) return;
    problem_ = kept.problem + "; nothing is counted until tappora resume";
    tell_(problem_);
}

void PauseKeeper::follow(tapcore::Instant now) {
    pauses_.takeNote();
    pauses_.endOverdue(now);
    const PauseSwitch::State state = pauses_.state();
    const PauseSwitch::State before = std::exchange(followed_, state);
    const bool isNew = state.pause != written_;
    if (isNew) write();
    if (state.lockProblem != before.lockProblem && !state.lockProblem.empty())
        tell_(fmt::format("{}; {}: {}", state.lockProblem, lockNotice.what, lockNotice.remedy));
    if (state.pause != before.pause || state.isLocked != before.isLocked) tell_(inWords(state));
    if (isNew && !problem_.empty()) tell_(problem_);
}

void PauseKeeper::write() {
    written_ = followed_.pause;
    problem_.clear();
    keep();
    if (files_.shown) showing_.run([&] { writePauseFile(*files_.shown, followed_.pause); });
}

void PauseKeeper::keep() try {
    if (files_.kept) writePauseFile(*files_.kept, followed_.pause);
    else if (followed_.pause) problem_ = "there is no home for it: a restart ends the pause";
} catch (const std::exception& error) {
    problem_ = fmt::format("{}; a restart {} the pause", error.what(), followed_.pause ? "ends" : "begins");
}

std::string PauseKeeper::inWords(const PauseSwitch::State& state) const {
    if (state.pause && state.pause->until)
        return fmt::format("paused until {}: nothing is counted", describe_(*state.pause->until));
    if (state.pause) return "paused: nothing is counted";
    return state.isLocked ? "the session is locked: nothing is counted" : "counting again";
}

}  // namespace tappora

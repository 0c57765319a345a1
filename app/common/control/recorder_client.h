#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "app/common/control/protocol.h"
#include "app/common/control/recorder_status.h"
#include "app/common/system/environment.h"

namespace tappora {

/// What came of asking one recorder.
struct RecorderReply {
    enum class Outcome {
        answered,  ///< `status` is what it says
        refused,   ///< it did not do what it was asked; `why`
        silent,    ///< it runs, and has not answered in time, or not in a way that can be read; `why`
        foreign,   ///< its socket is not this user's, and was not asked; `why`
    };

    Outcome outcome = Outcome::answered;
    std::filesystem::path socket;
    RecorderStatus status{};
    std::string why{};
};

/// Which recorders are asked, and how long they are waited for.
struct Asking {
    std::optional<std::filesystem::path> folder{};  ///< the one into this data folder; none: all of this user
    std::chrono::milliseconds patience = timeToAnswer;
};

/// Asks the recorders that run, by directory and name. No replies: none runs, so that nothing is counted.
std::vector<RecorderReply> askRecorders(const ControlQuestion& question, const Asking& asking,
                                        const Environment& environment);

// The three questions.

std::vector<RecorderReply> askStatus(const Asking& asking, const Environment& environment);
/// Has them count nothing until then, or until they are resumed.
std::vector<RecorderReply> pauseRecorders(std::optional<tapcore::Instant> until, const Asking& asking,
                                          const Environment& environment);
std::vector<RecorderReply> resumeRecorders(const Asking& asking, const Environment& environment);

}  // namespace tappora

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/common/control/recorder_client.h"
#include "app/common/system/environment.h"

namespace tappora {

inline constexpr std::string_view noKeyboard = "Nothing is counted: there is no keyboard that can be read";

/// What a recorder says, a line a fact.
std::string factsOf(const RecorderStatus& status, const Environment& environment);

/// "Paused until 14:00: nothing is counted."
std::string pauseLine(const Pause& pause, const Environment& environment);

/// The recorders that answered.
std::vector<RecorderStatus> answersOf(const std::vector<RecorderReply>& replies);
/// Tells why the others did not.
void complainOf(const std::vector<RecorderReply>& replies);

/// Whether one runs that did not do what it was asked, or did not answer.
bool haveRefused(const std::vector<RecorderReply>& replies);
/// For when none answered: "no recorder runs".
std::string noRecorder(const Asking& asking);

/// Whether there is one, and all of them count.
bool areCounting(const std::vector<RecorderStatus>& recorders);

}  // namespace tappora

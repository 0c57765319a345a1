#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "app/common/control/recorder_client.h"
#include "app/common/system/environment.h"

namespace tappora {

/// What the tray shows.
struct TrayState {
    enum class Counting { yes, paused, no };

    Counting counting = Counting::no;
    std::string text;                   ///< in words: "Paused until 14:00"
    std::optional<std::int64_t> today;  ///< today's keystrokes; nothing when they are not known

    bool operator==(const TrayState&) const = default;
};

/// What the recorders of the user say. One that does not count, of several, is what is shown.
TrayState trayState(const std::vector<RecorderReply>& replies, const Environment& environment);

/// Today's keystrokes, from the widgets' file.
std::optional<std::int64_t> keystrokesToday(const Environment& environment);

}  // namespace tappora

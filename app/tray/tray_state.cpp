#include "app/tray/tray_state.h"

#include "app/common/system/moment.h"
#include "app/common/widget/widget_file.h"
#include "core/counting/day.h"
#include "core/foundation/file_io.h"

namespace tappora {
namespace {

using Counting = TrayState::Counting;

TrayState stateOf(const RecorderStatus& status, const Environment& environment) {
    if (const auto& pause = status.pause) {
        const std::string until =
            pause->until ? clockText(*pause->until, environment.now, environment.calendar) : "you resume";
        return {Counting::paused, "Paused until " + until, {}};
    }
    if (status.isLocked) return {Counting::paused, "Paused while the session is locked", {}};
    if (!status.devices.hasKeyboard()) return {Counting::no, "Not counting: no keyboard can be read", {}};
    if (status.unstored) return {Counting::no, "Counts cannot be stored: " + status.unstored->why, {}};
    return {Counting::yes, "Counting", {}};
}

TrayState stateOf(const RecorderReply& reply, const Environment& environment) {
    if (reply.outcome == RecorderReply::Outcome::answered) return stateOf(reply.status, environment);
    return {Counting::no, "Not known whether it counts: " + reply.why, {}};
}

}  // namespace

TrayState trayState(const std::vector<RecorderReply>& replies, const Environment& environment) {
    TrayState shown{Counting::no, "Not counting: no recorder runs", {}};
    bool isFirst = true;
    for (const RecorderReply& reply : replies) {
        if (reply.outcome == RecorderReply::Outcome::foreign) continue;
        TrayState state = stateOf(reply, environment);
        if (isFirst || state.counting > shown.counting) shown = std::move(state);
        isFirst = false;
    }
    shown.today = keystrokesToday(environment);
    return shown;
}

std::optional<std::int64_t> keystrokesToday(const Environment& environment) {
    const auto snapshot =
        tapcore::WidgetSnapshot::decode(tapcore::readStoredFile(widgetFile(environment)).text);
    const tapcore::Day today(environment.now, environment.calendar);
    if (!snapshot || snapshot->day != today.description()) return std::nullopt;
    return snapshot->today;
}

}  // namespace tappora

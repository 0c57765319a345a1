#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "app/common/control/recorder_status.h"
#include "app/common/system/environment.h"
#include "core/widget/widget_snapshot.h"

namespace tappora {

/// The file beside that of the widgets that says when counting is paused: {"since": …, "until": …}, without
/// "until" when it is until it is ended. It is there only while counting is paused. Failure when there is
/// neither a data directory nor a home.
std::filesystem::path shownPauseFile(const Environment& environment);

/// The pause that it shows; nothing when there is none now, or it cannot be read.
std::optional<Pause> shownPause(const Environment& environment);

/// What the widgets show, as one line of JSON; while counting is paused, with the pause behind the other
/// members: "pause":{"since":…,"until":…}. The widgets' own file never has it.
std::string widgetLine(const tapcore::WidgetSnapshot& snapshot, const Environment& environment);

}  // namespace tappora

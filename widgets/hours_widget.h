#pragma once

#include <optional>

#include "widgets/bundle.h"

namespace tapwidgets {

/// The day hour by hour, as a line over an area.
std::optional<drawing::Node> hoursContent(const tapcore::WidgetSnapshot& snapshot, const Canvas& canvas);

}  // namespace tapwidgets

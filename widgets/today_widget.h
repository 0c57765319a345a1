#pragma once

#include <optional>

#include "widgets/bundle.h"

namespace tapwidgets {

/// The total of the day, and how it stands against the usual.
std::optional<drawing::Node> todayContent(const tapcore::WidgetSnapshot& snapshot, const Canvas& canvas);

}  // namespace tapwidgets

#pragma once

#include <optional>

#include "widgets/bundle.h"

namespace tapwidgets {

/// A bar for each day; nothing without days.
std::optional<drawing::Node> weekContent(const tapcore::WidgetSnapshot& snapshot, const Canvas& canvas);

}  // namespace tapwidgets

#pragma once

#include <optional>

#include "widgets/bundle.h"

namespace tapwidgets {

/// The board with its keys coloured by use; nothing without bounds that have an extent.
std::optional<drawing::Node> heatmapContent(const tapcore::WidgetSnapshot& snapshot, const Canvas& canvas);

}  // namespace tapwidgets

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tappora {

/// The command line that a link stands for: {"heatmap", "--from", "2026-09-01"} for
/// "tappora://heatmap?from=2026-09-01". A link only shows something. UsageError for any other link, and for
/// parameters that are unknown, doubled, empty or not as they should be.
std::vector<std::string> commandOf(std::string_view link);

}  // namespace tappora

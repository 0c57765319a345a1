#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>

#include "app/common/keyboard/fingers_view.h"
#include "app/common/system/environment.h"
#include "core/reports/layout_ranking.h"

namespace tappora {

/// Prints how the layouts that type a language compare, by the counts that were asked for. `language` is
/// that of --language, if it was given. Failure when today's layout does not type it.
void printRanking(const FingersOptions& options, const std::optional<std::string>& language,
                  const Environment& environment);

nlohmann::json standingJson(const tapcore::LayoutStanding& standing);

}  // namespace tappora

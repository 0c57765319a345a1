#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "app/common/folder/date_style.h"
#include "app/common/terminal/terminal.h"
#include "core/counting/tally.h"

namespace tappora {

/// A bar to the right, at most `width` columns long, which is what `most` gives; any count above 0 is seen.
std::string bar(std::int64_t count, std::int64_t most, std::size_t width, const Terminal& terminal);

/// The 24 hours as columns, 5 lines high, the fullest hour's count, as `most` writes it, beside the top and
/// the hours below; "" when all are 0. 71 columns wide and the count's.
std::string hoursChart(const tapcore::Tally::Hourly<std::int64_t>& byHour, const std::string& most,
                       const DateStyle& dates, const Terminal& terminal);

}  // namespace tappora

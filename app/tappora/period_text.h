#pragma once

#include <cstddef>
#include <string>

#include "app/common/folder/date_style.h"
#include "app/common/terminal/terminal.h"
#include "core/counting/key_face.h"
#include "core/files/summary.h"

namespace tappora {

// The pieces of text that the commands about a period share: each a heading and the lines under it, an
// empty line before it; "" when there is nothing to show.

/// A line for each figure of the period.
std::string figures(const tapcore::Summary& summary);

std::string hoursSection(const tapcore::Summary& summary, const DateStyle& dates, const Terminal& terminal);

/// A bar for each day, or for each month of a period longer than a month.
std::string daysSection(const tapcore::Summary& summary, const Terminal& terminal);

/// The most used keys, and the most used shortcuts beside them.
std::string topSection(const tapcore::Summary& summary, const tapcore::Legends& legends, std::size_t limit,
                       const Terminal& terminal);

/// "Mon" to "Sun".
std::string weekday(const tapcore::Day& day);

}  // namespace tappora

#pragma once

#include <string>
#include <string_view>

#include "core/reports/report_period.h"
#include "core/words/words.h"

namespace tapcore {

/// What people call a period, in the language of `words` and with the dates of `locale`: "October 2026",
/// "Week 38, September 14 – 20, 2026", "2026", "Sunday, September 20, 2026". Its name for files is
/// `ReportPeriod::name`.
std::string titleOf(const ReportPeriod& period, const Words& words, std::string_view locale);

}  // namespace tapcore

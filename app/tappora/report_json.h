#pragma once

#include <nlohmann/json_fwd.hpp>

#include "core/reports/report.h"
#include "core/words/words.h"

namespace tappora {

/// A report as --json prints it: its figures under their names, and each finding with its kind, the numbers
/// it rests on, the days they come from, and its sentence.
nlohmann::json toJson(const tapcore::Report& report, const tapcore::ReportKeyboard& keyboard,
                      const tapcore::Words& words);

}  // namespace tappora

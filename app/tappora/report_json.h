#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

#include "core/reports/report.h"
#include "core/words/words.h"

namespace tappora {

/// A report as --json prints it: its figures under their names, and each finding with its kind, the numbers
/// it rests on, the days they come from, and its sentence, whose dates are as in `locale`.
nlohmann::json toJson(const tapcore::Report& report, const tapcore::ReportKeyboard& keyboard,
                      const tapcore::Words& words, const std::string& locale);

}  // namespace tappora

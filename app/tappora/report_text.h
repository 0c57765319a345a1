#pragma once

#include <string>

#include "app/common/folder/date_style.h"
#include "app/common/terminal/terminal.h"
#include "core/reports/report.h"
#include "core/words/words.h"

namespace tappora {

/// What a report's texts and dates are in.
struct ReportLanguage {
    const tapcore::Words& words;
    const std::string& locale;
    DateStyle dates = {};
};

/// A report as a terminal shows it: what was found first, then how it compares, then the figures.
std::string reportText(const tapcore::Report& report, const tapcore::ReportKeyboard& keyboard,
                       const ReportLanguage& language, const Terminal& terminal);

}  // namespace tappora

#pragma once

#include "app/common/keyboard/keyboard.h"
#include "app/common/system/environment.h"
#include "core/files/store.h"
#include "core/reports/report.h"

namespace tappora {

/// The board and layout in force, which a report lays the counts over, and the layouts that type the language
/// of practice, which it compares them with.
tapcore::ReportKeyboard reportKeyboard(const KeyboardOptions& options, const tapcore::Store& store,
                                       const Environment& environment);

}  // namespace tappora

#pragma once

#include "app/common/command_line/command_line.h"
#include "app/common/system/environment.h"

namespace tappora {

/// `tappora report -o FILE.pdf`: the report on as many pages as it needs, its text as text.
void paintReport(CommandLine& line, const Environment& environment);

}  // namespace tappora

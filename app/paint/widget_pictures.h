#pragma once

#include "app/common/command_line/command_line.h"
#include "app/common/system/environment.h"

namespace tappora {

/// `tappora widget render`: every widget in all its families, light and dark, full colour, accented and
/// vibrant, as a file each.
void renderWidgets(CommandLine& line, const Environment& environment);

}  // namespace tappora

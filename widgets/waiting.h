#pragma once

#include "widgets/bundle.h"

namespace tapwidgets {

/// What every widget shows while there is nothing of today. The canvas's texts are in the language that the
/// user prefers; `width` tells which words have room in a line.
drawing::Node waiting(const Canvas& canvas, const drawing::TextWidth& width);

}  // namespace tapwidgets

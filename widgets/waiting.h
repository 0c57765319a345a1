#pragma once

#include "widgets/bundle.h"

namespace tapwidgets {

/// What every widget shows while there is nothing of today. The canvas's texts are in the language that the
/// user prefers.
drawing::Node waiting(const Canvas& canvas);

}  // namespace tapwidgets

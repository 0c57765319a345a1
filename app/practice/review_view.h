#pragma once

#include <string>

#include "app/practice/frame.h"
#include "app/practice/trainer.h"

namespace tappora {

/// The finished lesson's review: its stars, what is new, all letters. Blocks that do not fit are left out.
/// `notice`, when there is one, is shown in any case.
Frame reviewFrame(const Trainer& trainer, const std::string& notice, const ScreenShape& shape);

}  // namespace tappora

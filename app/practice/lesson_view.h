#pragma once

#include <string>

#include "app/practice/frame.h"
#include "app/practice/keyboard_view.h"
#include "app/practice/trainer.h"

namespace tappora {

/// The current lesson: its text with the place in it, speed and accuracy, the letter that is stressed with
/// what it has to reach, all letters, the next key and its finger on the keyboard. What does not fit is left
/// out, the text last. `notice`, when there is one, is shown in any case.
Frame lessonFrame(const Trainer& trainer, const KeyboardView& keyboard, const std::string& notice,
                  const ScreenShape& shape);

}  // namespace tappora

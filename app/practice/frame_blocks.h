#pragma once

#include <string>
#include <vector>

#include "app/practice/frame.h"
#include "app/practice/trainer.h"

namespace tappora {

// What the trainer's screens are made of.

/// Lines that belong together. Of several, those of the smallest rank are shown first when there is room for
/// few.
struct Block {
    int rank = 0;
    std::vector<FrameLine> lines;
};

/// The blocks that there is room for, in their order: whole ones by rank, and then blank lines between them.
Frame stacked(const std::vector<Block>& blocks, const ScreenShape& shape);

/// The language, the layout and the lesson's number; at the right what was practised today of the goal.
FrameLine titleLine(const Trainer& trainer, const ScreenShape& shape);

/// Every letter of the language with a mark for how far it is.
std::vector<FrameLine> letterLines(const Trainer& trainer, const ScreenShape& shape);

/// A notice, which may have several lines; none for "".
std::vector<FrameLine> noticeLines(const std::string& notice);

}  // namespace tappora

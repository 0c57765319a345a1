#pragma once

#include <cstdint>
#include <string>

#include "core/files/store.h"
#include "core/practice/letter_stats.h"
#include "core/practice/practice_history.h"

namespace tappora {

// The figures of practice: where they come from, and how they are written, on the screen and in print.

/// All practice in the data folder. Files that cannot be read are named on standard error; where there is
/// nothing else, the first of them is a Failure.
tapcore::PracticeHistory readHistory(const tapcore::Store& store);

/// "3:12" of seconds.
std::string minutes(std::int64_t seconds);
/// "97 %", rounded down, so that 100 % means all.
std::string percent(double share);

/// The words a minute of some presses, and how many of them were right; "-" where nothing was measured.
std::string speedText(const tapcore::LetterStats& stats);
std::string accuracyText(const tapcore::LetterStats& stats);

}  // namespace tappora

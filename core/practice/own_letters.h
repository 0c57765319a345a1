#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "core/counting/key_face.h"
#include "core/counting/tally.h"
#include "core/practice/letter_model.h"
#include "core/practice/letter_stats.h"
#include "core/practice/practice_rules.h"

namespace tapcore {

// Practice that is chosen by what its typist really types. Daily typing is counted and nothing else: which
// letters follow which, and what goes wrong, is not known.

/// How often each letter was typed in daily life.
using OwnLetters = std::map<std::string, std::int64_t>;

/// So many presses of letters are needed to choose by them.
inline constexpr std::int64_t fewestOwnLetters = 1000;

/// The presses of the keys that print these letters unshifted; of two keys for one letter, both. Nothing when
/// there are fewer than `fewestOwnLetters`.
std::optional<OwnLetters> ownLetters(const Tally::KeyCounts& counts, const Legends& legends,
                                     const std::vector<std::string>& letters);

/// What part of all these presses a letter has, 0 to 1.
double shareOf(const std::string& letter, const OwnLetters& own);

/// The model as its language would be if its letters came as often as in `own`: each next letter's count
/// times how much more often it is typed than the model has it, from a quarter to four times. No count
/// becomes 0, so that the same words are possible.
LetterModel weighed(const LetterModel& model, const OwnLetters& own);

/// The letter to stress by what it costs: of the open ones that are not learned, or of all when these are
/// learned, the one whose share times its average time is largest; one that was never timed takes twice the
/// target time. Of equals the one taught first. Nothing when none of them was typed.
std::optional<std::string> costliest(const PracticeRules& rules, const std::vector<std::string>& open,
                                     const LetterCounts& practised, const OwnLetters& own);

}  // namespace tapcore

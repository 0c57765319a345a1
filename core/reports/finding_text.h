#pragma once

#include <string>

#include "core/counting/key_face.h"
#include "core/reports/finding.h"
#include "core/reports/letter_gain.h"
#include "core/words/words.h"

namespace tapcore {

/// A finding as one sentence in the language of `words`. Keys and shortcuts are named by `legends`.
std::string textOf(const Finding& finding, const Legends& legends, const Words& words);

/// What practising a letter would spare, as a sentence or two.
std::string textOf(const LetterGain& gain, const Words& words);

/// A finger's name: "left index finger".
std::string nameOf(const Load::Striker& striker, const Words& words);

}  // namespace tapcore

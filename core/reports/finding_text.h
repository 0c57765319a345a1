#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/counting/key_face.h"
#include "core/reports/finding.h"
#include "core/reports/letter_gain.h"
#include "core/reports/report.h"
#include "core/words/words.h"

namespace tapcore {

/// A finding as one sentence in the language of `words`. Keys and shortcuts are named by `legends`, and dates
/// are written as in `locale`.
std::string textOf(const Finding& finding, const Legends& legends, const Words& words,
                   std::string_view locale);

/// What practising a letter would spare, as a sentence or two.
std::string textOf(const LetterGain& gain, const Words& words);

/// What could be done, a sentence or two each: what practising would spare, of so many letters; the command
/// that practises those that spare most; and a layout that would spare travel.
std::vector<std::string> adviceOf(const Report& report, const ReportKeyboard& keyboard, const Words& words,
                                  std::size_t gains);

/// A finger's name: "left index finger".
std::string nameOf(const Load::Striker& striker, const Words& words);

}  // namespace tapcore

#pragma once

#include <cstddef>
#include <vector>

#include "core/keyboard/board.h"
#include "core/reports/finding.h"
#include "core/reports/typing_days.h"

namespace tapcore {

/// A stretch and what its days add up to.
struct CountedStretch {
    Stretch stretch;
    StretchFigures figures;
};

/// So many earlier stretches with typing are needed to say that something changed.
inline constexpr std::size_t fewestForChange = 5;

/// How far a value must be from the usual of so many earlier stretches to count as changed, in the units of
/// `farness`. Few values tell little about their own spread, so it takes more of them. docs/reports.md says
/// how often chance alone gets there. `earlier` is at least `fewestForChange`.
double changeThreshold(std::size_t earlier);

/// What is not as usual in `now`, by how far it is from the usual, the farthest first. Nothing where too few
/// of the earlier stretches have typing. Fingers are those that strike the board's keys.
std::vector<Finding> changes(const CountedStretch& now, const std::vector<CountedStretch>& earlier,
                             const Board& board);

}  // namespace tapcore

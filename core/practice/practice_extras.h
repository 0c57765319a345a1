#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/practice/seeded_random.h"

namespace tapcore {

/// What a lesson mixes into its words. docs/practice.md gives the rates and the places.
struct PracticeExtras {
    bool capitals = false;
    bool punctuation = false;
    bool digits = false;

    /// The words with the extras that are on: some begin with a capital, some carry a mark of `openMarks`,
    /// some give way to a number of `openDigits`. A focus is drawn for every second mark or digit. As many
    /// words come out as go in, and a seed gives the same ones for ever.
    std::vector<std::string> apply(std::vector<std::string> words, const std::vector<std::string>& openDigits,
                                   const std::optional<std::string>& digitFocus,
                                   const std::vector<std::string>& openMarks,
                                   const std::optional<std::string>& markFocus, SeededRandom& rng) const;

    bool operator==(const PracticeExtras&) const = default;
};

}  // namespace tapcore

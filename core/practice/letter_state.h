#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace tapcore {

/// How far a letter has been learned.
enum class LetterState {
    notStarted,
    learning,
    learned,
    slipping,  ///< learned once, and lately too slow or too often missed
};

inline constexpr std::array<LetterState, 4> letterStates = {LetterState::notStarted, LetterState::learning,
                                                            LetterState::learned, LetterState::slipping};

/// The stored word of a state, and the state of a stored word.
std::string_view rawValue(LetterState state);
std::optional<LetterState> letterState(std::string_view rawValue);

}  // namespace tapcore

#include "core/practice/letter_state.h"

#include <cstddef>

namespace tapcore {

static constexpr std::array<std::string_view, letterStates.size()> rawValues = {"notStarted", "learning",
                                                                                "learned", "slipping"};

std::string_view rawValue(LetterState state) { return rawValues[static_cast<std::size_t>(state)]; }

std::optional<LetterState> letterState(std::string_view raw) {
    for (const LetterState state : letterStates)
        if (rawValue(state) == raw) return state;
    return std::nullopt;
}

}  // namespace tapcore

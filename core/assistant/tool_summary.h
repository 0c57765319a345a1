#pragma once

#include <cstddef>
#include <cstdint>
#include <nlohmann/json_fwd.hpp>

#include "core/assistant/assistant_tools.h"

namespace tapcore {

// What a period's summary lists, as text and as JSON.

inline constexpr std::size_t keysShown = 12;
inline constexpr std::int64_t chordsShown = 10;

/// A period as data, for programs that read more than text, and the JSON Schema it follows.
nlohmann::json periodJson(const AssistantTools::PeriodFigures& period, const Legends& legends);
nlohmann::json periodSchema();

}  // namespace tapcore

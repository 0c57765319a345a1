#pragma once

#include <cstddef>
#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <utility>
#include <vector>

#include "core/assistant/assistant_tools.h"

namespace tapcore {

// What a period's summary lists, as text and as JSON.

inline constexpr std::size_t keysShown = 12;
inline constexpr std::int64_t chordsShown = 10;

/// The most pressed keys, by count descending and then by code; counts below 1 are left out.
std::vector<std::pair<KeyCode, std::int64_t>> topKeys(const Tally::KeyCounts& counts);

/// A period as data, for programs that read more than text, and the JSON Schema it follows.
nlohmann::json periodJson(const AssistantTools::Period& period, const Legends& legends);
nlohmann::json periodSchema();

}  // namespace tapcore

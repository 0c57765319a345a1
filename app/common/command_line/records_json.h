#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "core/counting/chords.h"
#include "core/counting/day.h"
#include "core/files/day_file.h"
#include "core/files/summary.h"

namespace tappora {

// Records as JSON, under their own field names. Lists of 24 are by hour; counts by key are objects under the
// key code, counts by chord lists of {"chord", "count"}; what is absent is left out.

nlohmann::json toJson(const tapcore::Tally& tally);
nlohmann::json toJson(const tapcore::DayFile& file, const tapcore::Day& day);
/// With the derived figures beside the fields.
nlohmann::json toJson(const tapcore::Summary& summary);
nlohmann::json toJson(const std::vector<tapcore::Summary::DayTotal>& days);
nlohmann::json toJson(const std::vector<tapcore::KeyRow>& rows);
nlohmann::json toJson(const std::vector<tapcore::ChordRow>& rows);

/// As --json prints it: readable, without what would steer a terminal.
std::string jsonText(const nlohmann::json& json);

}  // namespace tappora

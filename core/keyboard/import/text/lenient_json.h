#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string_view>

namespace tapcore {

/// Parses JSON as people and keyboard editors write it. Beyond JSON it takes member names without quotes,
/// strings in single quotes, commas before a closing bracket, numbers such as ".5" and "+1", comments, and a
/// list of values without the brackets around it, which becomes an array. Throws JsonError with line and
/// column, also for what is more than 64 arrays and objects deep; bytes that are not UTF-8 are read as
/// U+FFFD.
nlohmann::json parseLenientJson(std::string_view text);

}  // namespace tapcore

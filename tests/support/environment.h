#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>

#include "app/common/system/environment.h"

namespace tappora {

using Variables = std::map<std::string, std::string>;

/// An environment with these variables alone, in UTC, on 20 September 2026 at 14:30.
inline Environment environmentWith(Variables variables, bool onTerminal = false) {
    using namespace std::chrono_literals;
    return {.variable = [variables =
                             std::move(variables)](const std::string& name) -> std::optional<std::string> {
                const auto found = variables.find(name);
                return found == variables.end() ? std::nullopt : std::optional(found->second);
            },
            .now = std::chrono::sys_days(std::chrono::year(2026) / 9 / 20) + 14h + 30min,
            .calendar = tapcore::Calendar("UTC"),
            .onTerminal = onTerminal};
}

}  // namespace tappora

#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "core/counting/day.h"

namespace tappora {

class CommandSyntax;

/// The options of the commands that are about a period.
struct PeriodOptions {
    std::optional<std::string> from;  ///< --from
    std::optional<std::string> to;    ///< --to
};

/// Some days in a row.
struct Period {
    tapcore::Day first;
    tapcore::Day last;
    std::int64_t days = 0;  ///< how many, first and last with them
};

/// `usualDays` is how long the period is that nobody says the first day of.
void addPeriodOptions(CommandSyntax& command, PeriodOptions& options, std::int64_t usualDays = 7);

/// The period from --from to --to: up to today when only the first is given, and the usual one that ends with
/// the last when that alone is given, or with today when none is. UsageError for what is no day, or a first
/// day after the last.
Period periodOf(const PeriodOptions& options, const tapcore::Day& today, const tapcore::Calendar& calendar,
                std::int64_t usualDays = 7);

/// "2026-09-01 to 2026-09-30, 30 days", or its one day.
std::string description(const Period& period);

}  // namespace tappora

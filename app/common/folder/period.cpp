#include "app/common/folder/period.h"

#include <fmt/format.h>

#include "app/common/command_line/command_line.h"
#include "app/common/folder/data_folder.h"
#include "app/common/program.h"
#include "core/foundation/integers.h"

namespace tappora {

void addPeriodOptions(CommandSyntax& command, PeriodOptions& options, std::int64_t usualDays) {
    const std::string usual = usualDays == 7 ? "six" : std::to_string(usualDays - 1);
    command.option("--from", options.from, "The first day; " + usual + " days before the last when not given")
        .type("YYYY-MM-DD");
    command.option("--to", options.to, "The last day; today when not given").type("YYYY-MM-DD");
}

Period periodOf(const PeriodOptions& options, const tapcore::Day& today, const tapcore::Calendar& calendar,
                std::int64_t usualDays) {
    const tapcore::Day last = options.to ? parseDay("--to", *options.to) : today;
    const tapcore::Day first =
        options.from ? parseDay("--from", *options.from) : last.adding(1 - usualDays, calendar);
    const std::int64_t days = last.daysSince(first) + 1;
    if (days < 1)
        throw UsageError(fmt::format("--from: {} is after {}", first.description(), last.description()));
    return {first, last, days};
}

std::string description(const Period& period) {
    if (period.days == 1) return period.last.description();
    return fmt::format("{} to {}, {} days", period.first.description(), period.last.description(),
                       tapcore::grouped(period.days));
}

}  // namespace tappora

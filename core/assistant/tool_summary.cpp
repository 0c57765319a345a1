// The tool summary: a period as a few lines of text.

#include "core/assistant/tool_summary.h"

#include <algorithm>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "core/assistant/tool_text.h"
#include "core/counting/chords.h"
#include "core/foundation/calendar.h"
#include "core/foundation/text_pieces.h"

namespace tapcore {
namespace {

using PeriodFigures = AssistantTools::PeriodFigures;

std::string number(std::int64_t value) { return std::to_string(value); }

std::string item(const std::string& name, std::int64_t count) { return name + " " + number(count); }

std::string listOf(const std::vector<std::string>& items) {
    return items.empty() ? "none" : joined(items, ", ");
}

std::string periodLine(const PeriodFigures& period) {
    const auto typed = std::count_if(period.sum.byDay.begin(), period.sum.byDay.end(),
                                     [](const Summary::DayTotal& day) { return day.keystrokes >= 1; });
    return "Period " + period.first.description() + " to " + period.last.description() + ": " +
           number(period.days) + " days, " + number(typed) + " with typing" +
           (period.isCut ? " (cut to the last " + number(AssistantTools::spanLimit) + " days)" : "");
}

std::string keyboardLine(const Summary& summary) {
    return "Keystrokes " + number(summary.keystrokes) + "; active hours " + number(summary.activeHours) +
           "; per active hour " + number(summary.averagePerActiveHour()) + "; busiest minute " +
           number(summary.peakPerMinute);
}

std::string mouseLine(const Summary& summary) {
    char metres[400];
    std::snprintf(metres, sizeof metres, "%.1f m", summary.movedMetres());
    const auto share = summary.keyboardShare();
    return "Clicks " + number(summary.clicks()) + "; mouse moved " + metres +
           (share ? "; keyboard " + number(*share) + "% of the work" : "");
}

std::string hoursLine(const Summary& summary) {
    std::vector<std::string> items;
    std::transform(summary.byHour.begin(), summary.byHour.end(), std::back_inserter(items), number);
    return "By hour of the day, 0 to 23: " + joined(items, ", ");
}

std::string keysLine(const Summary& summary, const Legends& legends) {
    std::vector<std::string> items;
    for (const KeyRow& row : topKeys(summary.byKey, legends, keysShown))
        items.push_back(item(shortened(row.name), row.count));
    return "Most pressed keys: " + listOf(items);
}

std::string chordsLine(const Summary& summary, const Legends& legends) {
    std::vector<std::string> items;
    for (const ChordRow& row : Chords::top(summary.byChord, legends, chordsShown))
        items.push_back(item(shortened(Chords::compact(row.keys)), row.count));
    return "Most used shortcuts: " + listOf(items);
}

std::string daysLine(const Summary& summary) {
    std::vector<std::string> items;
    for (const auto& [day, keystrokes] : summary.byDay) items.push_back(item(day.description(), keystrokes));
    return "Per day: " + joined(items, ", ");
}

}  // namespace

std::variant<PeriodFigures, AssistantTools::Output> AssistantTools::period(
    const nlohmann::json& arguments) const {
    const auto from = argument(arguments, "from");
    const auto to = argument(arguments, "to");
    for (const auto& given : {from, to})
        if (given && !Day::parse(*given))
            return toolError("Not a day: " + shortened(*given) + "; use YYYY-MM-DD.");
    const Calendar calendar("UTC");  // dates alone: no zone has a say in them
    PeriodFigures period;
    period.last = (to ? *Day::parse(*to) : today).adding(0, calendar);
    period.first = from ? Day::parse(*from)->adding(0, calendar) : period.last.adding(-6, calendar);
    if (period.first > period.last) return toolError("\"from\" is after \"to\".");
    period.days = period.last.daysSince(period.first) + 1;
    period.isCut = period.days > spanLimit;
    if (period.isCut) {
        period.days = spanLimit;
        period.first = period.last.adding(1 - spanLimit, calendar);
    }
    period.sum = store->summary(period.days, period.last, calendar, &period.problems);
    for (FileProblem& problem : period.problems) problem.path = problem.path.lexically_relative(store->root);
    if (period.sum.isEmpty() && !period.problems.empty()) return withProblems({}, period.problems);
    return period;
}

std::string AssistantTools::text(const PeriodFigures& period) const {
    const Summary& sum = period.sum;
    const std::vector<std::string> lines = {
        periodLine(period),     keyboardLine(sum),        mouseLine(sum), hoursLine(sum),
        keysLine(sum, legends), chordsLine(sum, legends), daysLine(sum)};
    return withProblems(toolText(joined(lines, "\n")), period.problems).text;
}

AssistantTools::Output AssistantTools::summary(const nlohmann::json& arguments) const {
    auto result = period(arguments);
    if (auto* error = std::get_if<Output>(&result)) return std::move(*error);
    return toolText(text(std::get<PeriodFigures>(result)));
}

}  // namespace tapcore

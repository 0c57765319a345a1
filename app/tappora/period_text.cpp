#include "app/tappora/period_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <vector>

#include "app/tappora/bar_chart.h"
#include "core/counting/chords.h"
#include "core/foundation/checked.h"
#include "core/foundation/integers.h"

namespace tappora {
namespace {

using tapcore::Chords::compact;

constexpr std::size_t barWidth = 40;

std::string heading(std::string_view text, const Terminal& terminal) {
    return "\n" + terminal.bold(text) + "\n";
}

std::string figure(std::string_view name, std::string_view value) {
    return fmt::format("  {:<22}{:>16}\n", name, value);
}

struct Bar {
    std::string name;
    std::int64_t keystrokes = 0;
};

/// A bar for each day, or, of more than 31 days, for each month.
std::vector<Bar> barsOf(const std::vector<tapcore::Summary::DayTotal>& days) {
    const bool byMonth = days.size() > 31;
    std::vector<Bar> bars;
    for (const auto& [day, keystrokes] : days) {
        std::string name = byMonth ? day.monthName() : weekday(day) + " " + day.description();
        if (bars.empty() || bars.back().name != name) bars.push_back({std::move(name), 0});
        tapcore::addChecked(bars.back().keystrokes, keystrokes);
    }
    return bars;
}

std::string barLine(const Bar& each, std::int64_t most, const Terminal& terminal) {
    const std::string drawn = bar(each.keystrokes, most, barWidth, terminal);
    return fmt::format("  {:<14}{:>14}{}{}\n", each.name, tapcore::grouped(each.keystrokes),
                       drawn.empty() ? "" : " ", drawn);
}

/// A chord as people read it, in letters where the glyphs of modifiers cannot be shown.
std::string label(const tapcore::ChordRow& row, const Terminal& terminal) {
    return terminal.unicode ? compact(row.keys) : row.chord.modifiers.name() + "+" + row.keys.back();
}

std::string keyLine(const tapcore::KeyRow& row, std::int64_t all) {
    const double share = static_cast<double>(row.count) * 100 / static_cast<double>(all);
    return fmt::format("{:<12}{:>12}{:>8.1f} %", row.name, tapcore::grouped(row.count), share);
}

std::vector<std::string> keyLines(const tapcore::Summary& summary, const tapcore::Legends& legends,
                                  std::size_t limit) {
    const std::int64_t all = tapcore::sumOfCounts(summary.byKey);
    std::vector<std::string> lines;
    for (const tapcore::KeyRow& row : tapcore::topKeys(summary.byKey, legends, limit))
        lines.push_back(keyLine(row, all));
    return lines;
}

std::vector<std::string> chordLines(const tapcore::Summary& summary, const tapcore::Legends& legends,
                                    std::size_t limit, const Terminal& terminal) {
    std::vector<std::string> lines;
    for (const auto& row : tapcore::Chords::top(summary.byChord, legends, static_cast<std::int64_t>(limit)))
        lines.push_back(fmt::format("{:<18}{:>12}", label(row, terminal), tapcore::grouped(row.count)));
    return lines;
}

/// Two lists beside each other; `left` is at least as long as `right`.
std::string beside(const std::vector<std::string>& left, const std::vector<std::string>& right) {
    std::string text;
    for (std::size_t line = 0; line < left.size(); ++line)
        text += "  " + left[line] + (line < right.size() ? "      " + right[line] : "") + "\n";
    return text;
}

}  // namespace

std::string figures(const tapcore::Summary& summary) {
    const tapcore::Tally::MouseHour mouse = summary.mouseTotal();
    std::string text = figure("keystrokes", tapcore::grouped(summary.keystrokes)) +
                       figure("active hours", tapcore::grouped(summary.activeHours)) +
                       figure("per active hour", tapcore::grouped(summary.averagePerActiveHour()));
    if (summary.peakPerMinute > 0) text += figure("busiest minute", tapcore::grouped(summary.peakPerMinute));
    if (mouse.isEmpty()) return text;
    text += figure("clicks", tapcore::grouped(summary.clicks())) +
            figure("scroll steps", tapcore::grouped(mouse.scrolls)) +
            figure("pointer, in metres", fmt::format("{:.1f}", summary.movedMetres()));
    const auto share = summary.keyboardShare();
    return share ? text + figure("keyboard share", fmt::format("{} %", *share)) : text;
}

std::string hoursSection(const tapcore::Summary& summary, const DateStyle& dates, const Terminal& terminal) {
    const std::int64_t most = *std::max_element(summary.byHour.begin(), summary.byHour.end());
    const std::string chart = hoursChart(summary.byHour, tapcore::grouped(most), dates, terminal);
    return chart.empty() ? "" : heading("Hours", terminal) + chart;
}

std::string daysSection(const tapcore::Summary& summary, const Terminal& terminal) {
    const std::vector<Bar> bars = barsOf(summary.byDay);
    std::int64_t most = 1;
    for (const Bar& each : bars) most = std::max(most, each.keystrokes);
    std::string text = heading("Days", terminal);
    for (const Bar& each : bars) text += barLine(each, most, terminal);
    return text;
}

std::string topSection(const tapcore::Summary& summary, const tapcore::Legends& legends, std::size_t limit,
                       const Terminal& terminal) {
    if (summary.byKey.empty()) return "";
    const auto chords = chordLines(summary, legends, limit, terminal);
    const std::string title =
        chords.empty() ? "Top keys" : fmt::format("{:<42}{}", "Top keys", "Top shortcuts");
    return heading(title, terminal) + beside(keyLines(summary, legends, limit), chords);
}

std::string weekday(const tapcore::Day& day) {
    constexpr std::array names = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    return names[day.weekday()];
}

}  // namespace tappora

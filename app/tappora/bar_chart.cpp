#include "app/tappora/bar_chart.h"
#include "core/foundation/characters.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace tappora {
namespace {

using Steps = std::array<std::string_view, 9>;
constexpr Steps rightward = {"", "▏", "▎", "▍", "▌", "▋", "▊", "▉", "█"};
constexpr Steps upward = {" ", "▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};

constexpr std::size_t chartLines = 5;

/// How many of `all` steps a count fills; at least one when it is above 0.
std::size_t filled(std::int64_t count, std::int64_t most, std::size_t all) {
    if (count <= 0) return 0;
    const double part = static_cast<double>(count) / static_cast<double>(most) * static_cast<double>(all);
    return std::clamp<std::size_t>(static_cast<std::size_t>(std::round(part)), 1, all);
}

std::string repeated(std::string_view text, std::size_t times) {
    std::string result;
    while (times-- > 0) result += text;
    return result;
}

/// The two characters of an hour in a line of the chart that has `below` lines under it.
std::string column(std::int64_t count, std::int64_t most, std::size_t below, bool unicode) {
    if (!unicode) return filled(count, most, chartLines) > below ? "##" : "  ";
    const std::size_t eighths = filled(count, most, chartLines * 8);
    return repeated(upward[std::clamp<std::size_t>(eighths, below * 8, below * 8 + 8) - below * 8], 2);
}

std::string hourNames(std::size_t indent, const DateStyle& dates) {
    std::string line(indent, ' ');
    for (std::size_t hour = 0; hour < tapcore::Tally::hours; hour += 3)
        line += fmt::format("{:<9}", dates.hour(hour));
    return line.substr(0, line.find_last_not_of(' ') + 1);
}

}  // namespace

std::string bar(std::int64_t count, std::int64_t most, std::size_t width, const Terminal& terminal) {
    if (!terminal.unicode) return terminal.accent(repeated("#", filled(count, most, width)));
    const std::size_t eighths = filled(count, most, width * 8);
    return terminal.accent(repeated(rightward[8], eighths / 8) + std::string(rightward[eighths % 8]));
}

std::string hoursChart(const tapcore::Tally::Hourly<std::int64_t>& byHour, const std::string& scale,
                       const DateStyle& dates, const Terminal& terminal) {
    const std::int64_t most = *std::max_element(byHour.begin(), byHour.end());
    if (most < 1) return "";
    const std::size_t scaleWidth = tapcore::columnCount(scale);
    std::string chart;
    for (std::size_t below = chartLines; below-- > 0;) {
        std::string line;
        for (const std::int64_t count : byHour) line += column(count, most, below, terminal.unicode) + " ";
        line.erase(line.find_last_not_of(' ') + 1);
        const std::string label = below == chartLines - 1 ? scale : std::string(scaleWidth, ' ');
        chart += terminal.faint(label) + " " + terminal.accent(line) + "\n";
    }
    return chart + terminal.faint(hourNames(scaleWidth + 1, dates)) + "\n";
}

}  // namespace tappora

#include "core/reports/typing_days.h"

#include <algorithm>
#include <numeric>

#include "core/foundation/checked.h"

namespace tapcore {
namespace {

constexpr std::int64_t dayBegins = 4;  // in the morning: who types past midnight has not begun a day
constexpr std::size_t saturday = 6;
constexpr std::size_t sunday = 0;

/// A file's counts of the first hours of its day. The busiest minute may be of a later hour, and is left out.
DayFile firstHours(const DayFile& file, std::int64_t hours) {
    DayFile first;
    const auto end = static_cast<std::size_t>(std::clamp<std::int64_t>(hours, 0, Tally::hours));
    std::copy_n(file.tally.keys.begin(), end, first.tally.keys.begin());
    std::copy_n(file.tally.chords.begin(), end, first.tally.chords.begin());
    std::copy_n(file.tally.unkeyed.begin(), end, first.tally.unkeyed.begin());
    std::copy_n(file.tally.mouse.begin(), end, first.tally.mouse.begin());
    return first;
}

/// From the first hour with a press to the last, both included; 0 without one.
std::int64_t hoursSpanned(const Tally::Hourly<std::int64_t>& byHour) {
    const auto isActive = [](std::int64_t presses) { return presses > 0; };
    const auto first = std::find_if(byHour.begin(), byHour.end(), isActive);
    const auto last = std::find_if(byHour.rbegin(), byHour.rend(), isActive);
    return first == byHour.end() ? 0 : last.base() - first;
}

void addDay(StretchFigures& figures, const Day& day, const DayFile& file) {
    figures.summary.add(day, file);
    const Tally::Hourly<std::int64_t> byHour = file.tally.byHour();
    const std::size_t weekday = day.weekday();
    for (std::size_t hour = 0; hour < Tally::hours; ++hour)
        addChecked(figures.byWeekdayAndHour[weekday][hour], byHour[hour]);
    ++figures.countedDays[weekday];
    const std::int64_t spanned = hoursSpanned(byHour);
    figures.spannedHours += spanned;
    if (spanned > 0) ++figures.typingDays;
}

}  // namespace

double StretchFigures::dayLength() const {
    return typingDays == 0 ? 0 : static_cast<double>(spannedHours) / static_cast<double>(typingDays);
}

std::optional<double> StretchFigures::middleOfTyping() const {
    const auto half = static_cast<double>(summary.keystrokes) / 2;
    double before = 0;
    for (std::int64_t hour = 0; hour < static_cast<std::int64_t>(Tally::hours); ++hour) {
        const auto at = static_cast<std::size_t>((hour + dayBegins) % 24);
        const auto presses = static_cast<double>(summary.byHour[at]);
        if (presses > 0 && before + presses >= half)
            return static_cast<double>(hour) + (half - before) / presses;
        before += presses;
    }
    return std::nullopt;
}

std::optional<std::int64_t> StretchFigures::busiestHour() const {
    if (summary.keystrokes == 0) return std::nullopt;
    return std::max_element(summary.byHour.begin(), summary.byHour.end()) - summary.byHour.begin();
}

std::int64_t StretchFigures::weekendKeystrokes() const {
    std::int64_t sum = 0;
    for (const std::size_t weekday : {saturday, sunday})
        sum = std::accumulate(byWeekdayAndHour[weekday].begin(), byWeekdayAndHour[weekday].end(), sum,
                              checkedSum);
    return sum;
}

StretchFigures figuresOf(const TypingDays& days, const Stretch& stretch) {
    StretchFigures figures;
    for (auto at = days.lower_bound(stretch.first); at != days.end() && at->first <= stretch.last; ++at) {
        const bool isPart = at->first == stretch.last && stretch.hoursOfLast < 24;
        addDay(figures, at->first, isPart ? firstHours(at->second, stretch.hoursOfLast) : at->second);
    }
    return figures;
}

}  // namespace tapcore

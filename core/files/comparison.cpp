#include "core/files/comparison.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "core/foundation/checked.h"

namespace tapcore::Comparison {
namespace {

/// The presses of the first hours of a day.
std::int64_t inFirst(std::size_t hours, const ByHour& presses) {
    const auto end = presses.begin() + static_cast<std::ptrdiff_t>(std::min(hours, Tally::hours));
    return std::accumulate(presses.begin(), end, std::int64_t{0}, checkedSum);
}

bool hasTyping(const ByHour& presses) {
    return std::any_of(presses.begin(), presses.end(), [](std::int64_t count) { return count >= 1; });
}

}  // namespace

std::optional<std::int64_t> percent(const ByHour& today, const std::vector<ByHour>& usual,
                                    double hoursPassed) {
    const auto whole = static_cast<std::size_t>(std::clamp<double>(hoursPassed, 0, Tally::hours));
    const double part = hoursPassed - static_cast<double>(whole);
    std::size_t days = 0;
    std::int64_t before = 0, underWay = 0;
    for (const ByHour& presses : usual) {
        if (!hasTyping(presses)) continue;
        ++days;
        addChecked(before, inFirst(whole, presses));
        if (whole < Tally::hours) addChecked(underWay, presses[whole]);
    }
    const double sum = static_cast<double>(before) + part * static_cast<double>(underWay);
    if (days < fewestDays || sum <= 0) return std::nullopt;
    const double mean = sum / static_cast<double>(days);
    const double percent = std::round((static_cast<double>(inFirst(whole + 1, today)) - mean) * 100 / mean);
    return percent < 0x1p63 ? std::optional(static_cast<std::int64_t>(percent)) : std::nullopt;
}

std::vector<ByHour> usualDays(const Store& store, const Day& today, const Calendar& calendar,
                              FileProblems* problems) {
    std::vector<ByHour> days;
    for (std::int64_t before = 1; before <= daysBack && days.size() < mostDays; ++before) {
        const Day day = today.adding(-before, calendar);
        const std::string place = store.url(day).replace_extension().string();
        const FatalContext context("summing up", place);
        const ByHour presses = store.read(day, problems).tally.byHour();
        if (hasTyping(presses)) days.push_back(presses);
    }
    return days;
}

}  // namespace tapcore::Comparison

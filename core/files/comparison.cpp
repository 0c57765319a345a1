#include "core/files/comparison.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "core/foundation/checked.h"

namespace tapcore::Comparison {
namespace {

/// The presses before the hour that follows `hour`.
std::int64_t upTo(const ByHour& presses, std::int64_t hour) {
    const auto hours = std::clamp<std::int64_t>(hour + 1, 0, Tally::hours);
    return std::accumulate(presses.begin(), presses.begin() + hours, std::int64_t{0}, checkedSum);
}

bool hasTyping(const ByHour& presses) {
    return std::any_of(presses.begin(), presses.end(), [](std::int64_t count) { return count >= 1; });
}

}  // namespace

std::optional<std::int64_t> percent(const ByHour& today, const std::vector<ByHour>& usual,
                                    std::int64_t hour) {
    std::size_t days = 0;
    std::int64_t sum = 0;
    for (const ByHour& presses : usual) {
        if (!hasTyping(presses)) continue;
        ++days;
        addChecked(sum, upTo(presses, hour));
    }
    if (days < fewestDays || sum == 0) return std::nullopt;
    const double mean = static_cast<double>(sum) / static_cast<double>(days);
    const double percent = std::round((static_cast<double>(upTo(today, hour)) - mean) * 100 / mean);
    return percent < 0x1p63 ? std::optional(static_cast<std::int64_t>(percent)) : std::nullopt;
}

std::vector<ByHour> usualDays(const Store& store, const Day& today, const Calendar& calendar,
                              FileProblems* problems) {
    std::vector<ByHour> days;
    for (std::int64_t before = daysBack; before >= 1; --before) {
        const Day day = today.adding(-before, calendar);
        const std::string place = store.url(day).replace_extension().string();
        const FatalContext context("summing up", place);
        days.push_back(store.read(day, problems).tally.byHour());
    }
    return days;
}

}  // namespace tapcore::Comparison

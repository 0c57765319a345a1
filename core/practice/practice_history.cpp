#include "core/practice/practice_history.h"

#include <algorithm>

namespace tapcore {
namespace {

/// Before all days that files can be named after.
const Day always{};

std::int64_t bestOf(const PracticeDay& day, const std::optional<std::string>& layout) {
    if (!layout) return day.best;
    const auto found = day.bests.find(*layout);
    return found == day.bests.end() ? 0 : found->second;
}

}  // namespace

LetterCounts PracticeHistory::totals(const std::optional<std::string>& layout) const {
    return recent(always, layout);
}

LetterCounts PracticeHistory::recent(const Day& since, const std::optional<std::string>& layout) const {
    LetterCounts sum;
    for (auto day = days.lower_bound(since); day != days.end(); ++day)
        for (const auto& [letter, stats] : day->second.lettersOn(layout)) sum[letter] += stats;
    return sum;
}

std::int64_t PracticeHistory::best(const std::optional<std::string>& layout) const {
    return bestSince(always, layout);
}

std::int64_t PracticeHistory::bestSince(const Day& since, const std::optional<std::string>& layout) const {
    std::int64_t best = 0;
    for (auto day = days.lower_bound(since); day != days.end(); ++day)
        best = std::max(best, bestOf(day->second, layout));
    return best;
}

std::int64_t PracticeHistory::seconds(const Day& day) const {
    const auto found = days.find(day);
    return found == days.end() ? 0 : found->second.seconds;
}

bool PracticeHistory::reached(const Day& day, std::int64_t goalSeconds) const {
    return seconds(day) >= std::max<std::int64_t>(goalSeconds, 1);
}

}  // namespace tapcore

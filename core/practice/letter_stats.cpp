#include "core/practice/letter_stats.h"

#include <algorithm>

#include "core/foundation/checked.h"

namespace tapcore {

std::optional<std::int64_t> LetterStats::averageMilliseconds() const {
    if (timed == 0) return std::nullopt;
    return timed == -1 ? checkedProduct(milliseconds, timed) : milliseconds / timed;
}

double LetterStats::accuracy() const {
    if (presses == 0 && misses == 0) return 1.0;
    return static_cast<double>(presses) / static_cast<double>(checkedSum(presses, misses));
}

void LetterStats::addSameDay(const LetterStats& other) {
    addChecked(presses, other.presses);
    addChecked(misses, other.misses);
    addChecked(timed, other.timed);
    addChecked(milliseconds, other.milliseconds);
    days = std::max(days, other.days);
}

LetterStats& LetterStats::operator+=(const LetterStats& other) {
    const std::int64_t sumOfDays = checkedSum(days, other.days);
    addSameDay(other);
    days = sumOfDays;
    return *this;
}

LetterStats statsOf(const std::string& letter, const LetterCounts& counts) {
    const auto found = counts.find(letter);
    return found == counts.end() ? LetterStats{} : found->second;
}

LetterStats sumOf(const LetterCounts& counts) {
    LetterStats sum;
    for (const auto& [letter, stats] : counts) sum.addSameDay(stats);
    return sum;
}

}  // namespace tapcore

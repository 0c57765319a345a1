#include "app/practice/figures.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "app/common/folder/data_folder.h"
#include "core/practice/practice_rules.h"

namespace tappora {

tapcore::PracticeHistory readHistory(const tapcore::Store& store) {
    tapcore::FileProblems problems;
    tapcore::PracticeHistory history = store.practiceHistory(&problems);
    const bool isEmpty = std::all_of(history.days.begin(), history.days.end(),
                                     [](const auto& item) { return item.second == tapcore::PracticeDay(); });
    requireAnswer(problems, isEmpty);
    return history;
}

std::string minutes(std::int64_t seconds) { return fmt::format("{}:{:02}", seconds / 60, seconds % 60); }

std::string percent(double share) {
    // What is a whole number of hundredths may be slightly below it: 0.95 * 100.
    return fmt::format("{} %", std::floor(share * 100 + 1e-9));
}

std::string speedText(const tapcore::LetterStats& stats) {
    return stats.timed > 0 ? std::to_string(tapcore::PracticeRules::wpm(stats)) : "-";
}

std::string accuracyText(const tapcore::LetterStats& stats) {
    return stats.presses + stats.misses > 0 ? percent(stats.accuracy()) : "-";
}

}  // namespace tappora

#include "core/reports/letter_gain.h"

#include <algorithm>

#include "core/foundation/checked.h"
#include "core/reports/key_class.h"
#include "core/reports/usual.h"

namespace tapcore {
namespace {

/// A letter with its presses in daily life and its time in practice.
struct Letter {
    std::string text;
    std::int64_t presses = 0;
    std::int64_t milliseconds = 0;
};

std::vector<Letter> lettersOf(const Tally::KeyCounts& counts, const Legends& legends,
                              const LetterCounts& practised) {
    std::vector<Letter> letters;
    for (const auto& [code, legend] : legends) {
        const auto found = legend.empty() ? practised.end() : practised.find(legend.front());
        if (found == practised.end() || found->second.timed < fewestTimed) continue;
        letters.push_back({found->first, counts.valueOr(code, 0), *found->second.averageMilliseconds()});
    }
    return letters;
}

double usualTime(const std::vector<Letter>& letters) {
    std::vector<double> times;
    for (const Letter& each : letters) times.push_back(static_cast<double>(each.milliseconds));
    std::sort(times.begin(), times.end());
    return quantile(times, 0.5);
}

}  // namespace

std::vector<LetterGain> letterGains(const Tally::KeyCounts& counts, const Legends& legends,
                                    const LetterCounts& practised, std::int64_t typingDays) {
    const std::vector<Letter> letters = lettersOf(counts, legends, practised);
    if (letters.size() < fewestUsual || typingDays == 0) return {};
    const double usual = usualTime(letters);
    const std::int64_t all = countsByClass(counts, legends)[static_cast<std::size_t>(KeyClass::letter)];
    std::vector<LetterGain> gains;
    for (const Letter& each : letters) {
        const double slower = static_cast<double>(each.milliseconds) - usual;
        if (slower <= 0 || each.presses == 0) continue;
        constexpr double inMinute = 60000;
        const double pressesADay = static_cast<double>(each.presses) / static_cast<double>(typingDays);
        gains.push_back(
            {.letter = each.text,
             .presses = each.presses,
             .share = static_cast<double>(each.presses) / static_cast<double>(std::max(all, each.presses)),
             .milliseconds = each.milliseconds,
             .minutesADay = pressesADay * static_cast<double>(each.milliseconds) / inMinute,
             .sparedADay = pressesADay * slower / inMinute});
    }
    std::erase_if(gains, [](const LetterGain& gain) { return gain.sparedADay < leastSpared; });
    std::stable_sort(gains.begin(), gains.end(),
                     [](const LetterGain& a, const LetterGain& b) { return a.sparedADay > b.sparedADay; });
    return gains;
}

}  // namespace tapcore

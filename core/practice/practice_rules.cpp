#include "core/practice/practice_rules.h"

#include <algorithm>
#include <array>
#include <limits>

namespace tapcore {
namespace {

constexpr std::int64_t millisecondsOfMinute = 60000;
constexpr std::int64_t keystrokesOfWord = 5;

constexpr std::array<std::int64_t, 4> speedPresets = {30, 35, 45, 60};
constexpr std::int64_t ownSpeedTag = 0;
constexpr std::int64_t firstOwnSpeed = 50;  // no preset, so that the picker shows it as one's own

bool isPreset(std::int64_t speed) {
    return std::find(speedPresets.begin(), speedPresets.end(), speed) != speedPresets.end();
}

/// For comparing: a letter that was never timed counts as the slowest of all.
std::int64_t slowness(const LetterStats& stats) {
    return stats.averageMilliseconds().value_or(std::numeric_limits<std::int64_t>::max());
}

}  // namespace

PracticeRules::PracticeRules(std::int64_t targetWPM)
    : targetWPM_(std::clamp(targetWPM, slowestTarget, fastestTarget)) {}

std::int64_t PracticeRules::targetMilliseconds() const {
    return millisecondsOfMinute / (targetWPM_ * keystrokesOfWord);
}

bool PracticeRules::meetsMark(const LetterStats& stats) const {
    const auto average = stats.averageMilliseconds();
    return average && stats.timed >= samples && *average <= targetMilliseconds() &&
           stats.accuracy() >= targetAccuracy;
}

bool PracticeRules::learned(const LetterStats& stats) const {
    return meetsMark(stats) && stats.days >= minDays;
}

double PracticeRules::progress(const LetterStats& stats) const {
    if (learned(stats)) return 1.0;
    const double sampleShare = std::min(
        static_cast<double>(stats.timed) / static_cast<double>(std::max<std::int64_t>(samples, 1)), 1.0);
    double speedShare = 0;
    if (const auto average = stats.averageMilliseconds()) {
        const double q = static_cast<double>(targetMilliseconds()) /
                         static_cast<double>(std::max<std::int64_t>(*average, 1));
        speedShare = q < 1 ? 0.6 * q : 0.6;
    }
    const double accuracyShare = std::min(stats.accuracy() / targetAccuracy, 1.0);
    return std::min(0.4 * sampleShare + speedShare * accuracyShare, 0.95);
}

LetterState PracticeRules::state(bool open, const LetterStats& total, const LetterStats& recent) const {
    if (!open) return LetterState::notStarted;
    if (!learned(total)) return LetterState::learning;
    if (recent.timed < samples) return LetterState::learned;
    const auto average = recent.averageMilliseconds();
    if (!average || *average > targetMilliseconds()) return LetterState::slipping;
    return recent.accuracy() >= targetAccuracy ? LetterState::learned : LetterState::slipping;
}

std::vector<std::string> PracticeRules::open(const std::vector<std::string>& order, const LetterCounts& stats,
                                             std::optional<std::int64_t> first, std::int64_t atLeast) const {
    const auto length = static_cast<std::int64_t>(order.size());
    auto end = order.begin() + std::clamp<std::int64_t>(std::max(atLeast, first.value_or(start)), 0, length);
    const auto isLearned = [&](const std::string& letter) { return learned(statsOf(letter, stats)); };
    if (std::all_of(order.begin(), end, isLearned)) {
        // One more opens; the next one only once that one is learned too.
        end = std::find_if_not(end, order.end(), isLearned);
        if (end != order.end()) ++end;
    }
    return {order.begin(), end};
}

bool PracticeRules::isPreferred(const LetterStats& later, const LetterStats& current) const {
    const bool laterLacks = later.timed < samples;
    const bool currentLacks = current.timed < samples;
    return laterLacks != currentLacks ? laterLacks : slowness(later) > slowness(current);
}

std::optional<std::string> PracticeRules::focus(const std::vector<std::string>& open,
                                                const LetterCounts& stats) const {
    if (open.empty()) return std::nullopt;
    std::optional<std::string> choice;
    for (const std::string& letter : open) {
        const LetterStats later = statsOf(letter, stats);
        if (learned(later)) continue;
        if (!choice || isPreferred(later, statsOf(*choice, stats))) choice = letter;
    }
    return choice ? choice : open.back();
}

std::int64_t PracticeRules::wpm(std::int64_t milliseconds) {
    return milliseconds < 1 ? 0 : millisecondsOfMinute / keystrokesOfWord / milliseconds;
}

std::int64_t PracticeRules::wpm(const LetterStats& stats) {
    return wpm(stats.averageMilliseconds().value_or(0));
}

std::int64_t PracticeRules::speedTag(std::int64_t speed) { return isPreset(speed) ? speed : ownSpeedTag; }

std::int64_t PracticeRules::speed(std::int64_t picking, std::int64_t from) {
    if (picking != ownSpeedTag) return picking;
    return isPreset(from) ? firstOwnSpeed : from;
}

}  // namespace tapcore

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/foundation/raw_values.h"
#include "core/practice/letter_stats.h"

namespace tapcore {

/// How far a letter has been learned.
enum class LetterState {
    notStarted,
    learning,
    learned,
    slipping,  ///< learned once, and lately too slow or too often missed
};

inline constexpr RawValues<LetterState, 4> letterStates{{"notStarted", "learning", "learned", "slipping"}};

/// What a letter must reach to count as learned, which letters that opens, and which one a lesson stresses.
/// Speeds are in words per minute, five keystrokes making a word.
class PracticeRules {
  public:
    static constexpr std::int64_t slowestTarget = 10;
    static constexpr std::int64_t fastestTarget = 150;

    double targetAccuracy = 0.95;
    std::int64_t samples = 60;  ///< timed presses before a letter can be judged
    std::int64_t minDays = 2;   ///< days of practice before a letter can be learned
    std::int64_t start = 6;     ///< letters open at the very beginning

    /// The target speed is taken into 10 to 150.
    explicit PracticeRules(std::int64_t targetWPM);

    std::int64_t targetWPM() const { return targetWPM_; }
    /// The time of a keystroke at the target speed.
    std::int64_t targetMilliseconds() const;

    /// Whether a letter is practised, fast and right enough, on however many days.
    bool meetsMark(const LetterStats& stats) const;
    bool learned(const LetterStats& stats) const;
    /// How far a letter is on its way, 0 to 1, for drawing: 1 only once it is learned.
    double progress(const LetterStats& stats) const;
    /// `total` is all practice of the letter, `recent` that of a recent period.
    LetterState state(bool open, const LetterStats& total, const LetterStats& recent) const;

    /// The open letters: so many of `order` as `first` says (`start` when it says nothing) and at least
    /// `atLeast`, and one more for as long as all of them are learned.
    std::vector<std::string> open(const std::vector<std::string>& order, const LetterCounts& stats,
                                  std::optional<std::int64_t> first, std::int64_t atLeast) const;
    /// The letter to stress: of those not learned, one that lacks timed presses before one that does not,
    /// then the slowest, then the earliest. The last open one when all are learned; nothing when none is
    /// open.
    std::optional<std::string> focus(const std::vector<std::string>& open, const LetterCounts& stats) const;

    /// The speed at a time per keystroke; 0 below 1 ms.
    static std::int64_t wpm(std::int64_t milliseconds);
    /// The speed of the timed presses; 0 without any.
    static std::int64_t wpm(const LetterStats& stats);

    /// The speed picker offers 30, 35, 45 and 60, and tag 0 for any other speed.
    static std::int64_t speedTag(std::int64_t speed);
    /// The speed that a picked tag gives, from the stored one. Going from a preset to a speed of one's own
    /// gives 50.
    static std::int64_t speed(std::int64_t picking, std::int64_t from);

    bool operator==(const PracticeRules&) const = default;

  private:
    bool isPreferred(const LetterStats& later, const LetterStats& current) const;

    std::int64_t targetWPM_;
};

}  // namespace tapcore

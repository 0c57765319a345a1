#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/practice/letter_stats.h"

namespace tapcore {

/// One lesson being typed: what a key does, what it counts, and what it is timed with. It knows no screen and
/// no clock: each press comes with its moment, in milliseconds of any clock that only runs forwards.
///
/// The time of a press is that from the press before it. Not timed are the first press of a lesson, a press
/// after a pause, one that came together with the press before it, and a press after an error or after going
/// back.
class LessonSession {
  public:
    /// A longer time without a press is a pause.
    static constexpr std::int64_t longestGap = 3000;
    /// What follows a press sooner was pasted, or held back on its way: how long it took, nobody knows.
    static constexpr std::int64_t shortestGap = 5;
    /// How long a press that may be the beginning of the expected character, its base, waits for the rest of
    /// it.
    static constexpr std::int64_t longestBeginning = 30;

    /// How a character was typed.
    enum class Outcome {
        ahead,  ///< still to be typed
        right,
        wrong,      ///< missed, and not put right
        corrected,  ///< missed, then put right
    };

    /// What was practised since it was last taken.
    struct Share {
        LetterCounts counts;
        std::int64_t milliseconds = 0;  ///< between presses, pauses left out

        bool isEmpty() const { return counts.empty(); }
    };

    /// The words are typed with single spaces between them. After a wrong key the lesson stays at its
    /// character until that is typed, unless `letErrorsStand`.
    explicit LessonSession(const std::vector<std::string>& words, bool letErrorsStand = false);

    /// A key that types a character (or a part of one, a combining mark).
    void press(std::string_view character, std::int64_t now);
    /// The key that goes back to the character before, with `letErrorsStand`; otherwise there is nothing
    /// to take back. What was counted stays counted.
    void erase();
    /// Lets a press that waits for the rest of its character wait no longer than `longestBeginning`. Returns
    /// whether one still waits.
    bool settle(std::int64_t now);
    bool isWaiting() const { return !beginning_.empty(); }

    const std::string& text() const { return text_; }
    /// The text's characters, and how each of them was typed.
    const std::vector<std::string>& characters() const { return characters_; }
    const std::vector<Outcome>& outcomes() const { return outcomes_; }
    /// Which character comes next, and the character itself; nothing at the end.
    std::size_t position() const { return position_; }
    const std::string* expected() const { return isFinished() ? nullptr : &characters_[position_]; }
    bool isFinished() const { return position_ == characters_.size(); }

    /// What the whole lesson counted, of each character expected.
    const LetterCounts& counts() const { return counts_; }
    std::int64_t milliseconds() const { return milliseconds_; }
    /// What was counted since the last call.
    Share takeShare();
    bool hasShare() const { return !share_.isEmpty(); }

  private:
    void judge(std::string_view character, std::int64_t now);
    void count(const std::string& expected, const LetterStats& stats);
    bool isBeginning(std::string_view character) const;

    std::string text_;
    std::vector<std::string> characters_;
    std::vector<Outcome> outcomes_;
    std::size_t position_ = 0;
    bool letErrorsStand_;
    bool isAfterError_ = false;
    std::optional<std::int64_t> lastPress_;
    std::string beginning_;  ///< the press that waits
    std::int64_t beginningAt_ = 0;
    LetterCounts counts_;
    std::int64_t milliseconds_ = 0;
    Share share_;
};

}  // namespace tapcore

#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace tapcore {

/// The figures of practising one letter.
struct LetterStats {
    std::int64_t presses = 0;       ///< right presses
    std::int64_t misses = 0;        ///< wrong presses where this letter was to come
    std::int64_t timed = 0;         ///< presses whose time was measured
    std::int64_t milliseconds = 0;  ///< the sum of those times
    std::int64_t days = 0;          ///< on how many days it was practised

    /// The time of a press, truncated; nothing when none was measured.
    std::optional<std::int64_t> averageMilliseconds() const;
    /// What part of the presses was right, 0 to 1; 1 without any.
    double accuracy() const;

    /// Adds field by field; fatal when a sum leaves 64 bits.
    LetterStats& operator+=(const LetterStats& other);
    friend LetterStats operator+(LetterStats a, const LetterStats& b) { return a += b; }
    /// Adds another record of the same day, field by field; the days are not added: the larger number of them
    /// is kept. Fatal when a sum leaves 64 bits.
    void addSameDay(const LetterStats& other);

    bool operator==(const LetterStats&) const = default;
};

/// Counters by letter, a letter being one character.
using LetterCounts = std::map<std::string, LetterStats>;

/// The counters of a letter, all zeros when it has no counters.
LetterStats statsOf(const std::string& letter, const LetterCounts& counts);

/// The counters of all letters of the same days together: the days are the most of any letter.
LetterStats sumOf(const LetterCounts& counts);

}  // namespace tapcore

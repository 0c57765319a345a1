#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/counting/day.h"
#include "core/files/file_format.h"
#include "core/files/row_reader.h"
#include "core/practice/letter_stats.h"

namespace tapcore {

/// One day of practice: counters for each letter, kept apart by layout, since the same letter on two layouts
/// is two skills, and a few values of the day. docs/practice.md shows the text.
struct PracticeDay {
    LetterCounts letters;                          ///< over all layouts
    std::map<std::string, LetterCounts> byLayout;  ///< by layout id; the empty id means no layout
    std::int64_t seconds = 0;
    std::int64_t lessons = 0;                   ///< those that were finished
    std::optional<std::string> layout;          ///< the one last practised on
    std::int64_t best = 0;                      ///< the fastest lesson in words per minute; 0 without one
    std::map<std::string, std::int64_t> bests;  ///< the fastest lesson on each layout, by its id
    std::map<std::string, std::string>
        otherMeta;  ///< rows of the Day table that mean nothing here, kept as they are

    PracticeDay() = default;
    /// Reads a file's text, in either format or tab-separated, and never fails: what cannot be used is left
    /// out, and listed in `skipped` when that is given: rows, and all else that `text` would not write again.
    /// Each letter in it has been practised on one day.
    explicit PracticeDay(std::string_view text, std::vector<SkippedRow>* skipped = nullptr);

    /// The file's text; reading it gives an equal day, as long as `letters` is the sum of `byLayout`.
    std::string text(const Day& day, FileFormat format) const;

    /// Adds a letter's counters of the same day, on a layout and over all.
    void add(const std::string& onLayout, const std::string& letter, const LetterStats& stats);
    /// Adds another record of the same day. Counters, seconds and lessons add; the days of a letter and the
    /// best speeds are the larger of the two; the layout and the other rows already set stay.
    void merge(const PracticeDay& other);

    /// The counters of one layout, or of all together.
    LetterCounts lettersOn(const std::optional<std::string>& onLayout) const;

    bool operator==(const PracticeDay&) const = default;
};

}  // namespace tapcore

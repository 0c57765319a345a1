#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/counting/day.h"
#include "core/counting/tally.h"
#include "core/files/file_format.h"
#include "core/files/row_reader.h"

namespace tapcore {

/// One machine's counts of one calendar day: a tally and a few values of the day. docs/file-formats.md shows
/// the text.
struct DayFile {
    Tally tally;
    std::int64_t peakPerMinute = 0;  ///< keystrokes of the busiest minute
    std::int64_t pausedMinutes = 0;
    std::optional<std::string> board;
    std::optional<std::string> layout;
    std::map<std::string, std::string>
        otherMeta;  ///< rows of the Day table that mean nothing here, kept as they are

    DayFile() = default;
    /// Reads a file's text, in either format or tab-separated, and never fails: rows that cannot be used are
    /// left out, and listed in `skipped` when it is given. Counts of repeated rows add up; of other rows the
    /// last one counts.
    explicit DayFile(std::string_view text, std::vector<SkippedRow>* skipped = nullptr);

    /// The file's text; reading it gives an equal day file.
    std::string text(FileFormat format, const Day& day) const;

    /// Adds counts: tallies add, the larger peak is kept, paused minutes add when above 0.
    void merge(const Tally& counted, std::int64_t peak, std::int64_t paused);
    /// Adds another file of the same day; board, layout and other rows are kept, and taken over where this
    /// file has no such row.
    void merge(const DayFile& other);

    bool operator==(const DayFile&) const = default;
};

}  // namespace tapcore

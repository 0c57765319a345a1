#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tapcore {

/// Adds up all numbers of data files, without reading the files into records, to find out whether their
/// counts fit into 64 bits. Adding up the records of files whose counts do not fit is fatal.
class CountSum {
  public:
    /// Adds the magnitudes of all numbers in the rows of a data file's text, the first cells excepted, which
    /// name the row; durations count in minutes. Of the table of the day, only "paused" is a count.
    void add(std::string_view text);
    /// Adds what another one has added.
    void add(const CountSum& other);

    /// Whether any of those numbers can be added up within 64 bits. Short numbers are overestimated, which
    /// tells only where there are more of them than a folder of days holds.
    bool fits() const { return sum_.has_value(); }

  private:
    std::optional<std::int64_t> sum_ = 0;  ///< nothing once it has left 64 bits
};

/// Why a file whose counts do not fit is not added.
inline constexpr std::string_view tooLarge = "counts too large to be added up";

/// Whether the counts of one text can be added up.
bool countsFit(std::string_view text);

}  // namespace tapcore

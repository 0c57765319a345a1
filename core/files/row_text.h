#pragma once

#include <string>
#include <string_view>

#include "core/counting/day.h"
#include "core/files/count_rows.h"
#include "core/foundation/raw_values.h"

namespace tapcore {

/// The two forms in which rows of counts are given out and taken in; docs/data.md describes them.
enum class RowForm {
    csv,   ///< as RFC 4180 has it, with a header line
    json,  ///< JSON Lines: an object on each line, without members that are empty
};

/// The columns of rows, in the order in which they are written.
inline constexpr RawValues<std::size_t, 7> rowColumns{
    {"machine", "day", "hour", "kind", "keycode", "modifiers", "count"}};

/// Rows of counts as text. It grows until it is taken.
class RowText {
  public:
    explicit RowText(RowForm form);

    /// The machine and the day of all rows from here on.
    void begin(std::string_view machine, const Day& day);
    void add(const CountRow& row);

    const std::string& text() const { return text_; }
    void clear() { text_.clear(); }

  private:
    /// The start of a row, which many rows in succession share: machine, day, hour and kind.
    std::string startOf(const CountRow& row) const;

    RowForm form_;
    std::string ofDay_;  ///< machine and day
    std::string start_;  ///< of a row like the last one; "" for none
    CountRow last_;
    std::string text_;
};

}  // namespace tapcore

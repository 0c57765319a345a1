#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tapcore {

/// Whether a cell is made of dashes as those of a rule are. A row of nothing else is taken for a rule.
bool isRuleCell(std::string_view cell);

/// Walks the text of a data file once, in either format or tab-separated, and hands out what it holds piece
/// by piece: a heading, then the rows of its table. What is neither is passed over, so it never fails.
///
///     for (TableReader reader(text); reader.next();) …reader.isHeading() ? reader.section() :
///     reader.cells()…
///
/// Rules of tables are passed over; their header lines are rows like any other. Rows before the first heading
/// are ignored. Views hold until the next call of `next`, and point into the text.
class TableReader {
  public:
    /// What is handed out: headings and rows alone, or every line that says something.
    enum class Lines { ofTables, all };

    /// `text` must outlive the reader.
    explicit TableReader(std::string_view text, Lines lines = Lines::ofTables);

    /// Goes to the next heading or row, or line that is neither; false at the end.
    bool next();

    /// Whether the line to come is a row of this many whole numbers without sign, as this program writes
    /// them, which are then in `numbers`. Nothing is gone to: that is what `skip` does, which is faster than
    /// `next` for long tables. False for any other line, also a row of numbers that are written otherwise.
    bool peekNumbers(std::span<std::int64_t> numbers);
    /// Goes past the line that `peekNumbers` found.
    void skip();

    /// Whether `next` found a heading, the start of a section whose rows follow.
    bool isHeading() const { return isHeading_; }
    /// Whether it found a line that is neither, and not a title. It has no cells.
    bool isOther() const { return isOther_; }
    /// The section's name: the first word of its heading, lower-cased.
    const std::string& section() const { return section_; }
    /// The row's cells.
    const std::vector<std::string_view>& cells() const { return cells_; }
    /// The number of the line that `next` found, from 1. Empty lines count, as they do in an editor.
    std::size_t line() const { return line_; }
    /// That line, without the white space around it.
    std::string_view text() const { return text_; }

  private:
    bool takeLine(std::string_view& line);
    bool readHeading(std::string_view line);
    bool readRow(std::string_view line);
    bool readBarredRow(std::string_view line);

    std::string_view rest_;
    Lines lines_;
    std::size_t peeked_ = 0;  ///< the size of the line that was found, its end included
    std::size_t line_ = 0;
    std::string_view text_;
    bool isHeading_ = false;
    bool isOther_ = false;
    bool inSection_ = false;
    std::string section_;
    std::vector<std::string_view> cells_;
};

}  // namespace tapcore

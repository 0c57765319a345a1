#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tapcore {

/// Goes through the records of CSV text, as RFC 4180 has it. Empty lines are no records. Never fails: a quote
/// that is not closed goes up to the end of the text.
class CsvRecords {
  public:
    explicit CsvRecords(std::string_view text) : rest_(text) {}

    /// Replaces `fields` by those of the next record; false when there is none.
    bool next(std::vector<std::string>& fields);

    /// The line in which the last record begins, from 1. A quoted field may hold line ends.
    std::size_t line() const { return line_; }

  private:
    void skipEmptyLines();
    /// Takes the field off that is at the start of the rest.
    void takeField(std::string& field);
    void takeQuoted(std::string& field);
    bool isAtEnd() const { return rest_.empty() || rest_.front() == '\n' || rest_.starts_with("\r\n"); }

    std::string_view rest_;
    std::size_t line_ = 0;
    std::size_t nextLine_ = 1;
};

}  // namespace tapcore

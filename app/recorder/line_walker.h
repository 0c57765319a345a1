#pragma once

#include <cstddef>
#include <string_view>

namespace tappora {

/// Walks the lines of a text, of which the last may lack its end. A carriage return before a line's end is
/// left out.
class LineWalker {
  public:
    /// `text` must outlive the walker.
    explicit LineWalker(std::string_view text) : rest_(text) {}

    bool next() {
        if (rest_.empty()) return false;
        const std::size_t end = rest_.find('\n');
        line_ = rest_.substr(0, end);
        rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
        if (line_.ends_with('\r')) line_.remove_suffix(1);
        ++number_;
        return true;
    }

    std::string_view line() const { return line_; }
    std::size_t number() const { return number_; }  ///< from 1

  private:
    std::string_view rest_;
    std::string_view line_;
    std::size_t number_ = 0;
};

}  // namespace tappora

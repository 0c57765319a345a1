#pragma once

#include <charconv>
#include <cstddef>
#include <string_view>
#include <system_error>

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

/// Takes the fields of an event line one after the other; each says whether it was there.
class FieldWalker {
  public:
    explicit FieldWalker(std::string_view text) : rest_(text) {}

    void skipBlanks() {
        while (!rest_.empty() && (rest_.front() == ' ' || rest_.front() == '\t')) rest_.remove_prefix(1);
    }

    bool take(char c) {
        if (rest_.empty() || rest_.front() != c) return false;
        rest_.remove_prefix(1);
        return true;
    }

    /// A number of digits of this base; a decimal one may be negative when its type is signed.
    template <class Number>
    bool take(Number& value, int base = 10) {
        const auto [stop, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), value, base);
        if (error != std::errc()) return false;
        rest_.remove_prefix(static_cast<std::size_t>(stop - rest_.data()));
        return true;
    }

    std::string_view rest() const { return rest_; }

  private:
    std::string_view rest_;
};

}  // namespace tappora

#pragma once

#include <charconv>
#include <string_view>
#include <system_error>

namespace tappora {

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

#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace tappora {

/// Reads lines from a descriptor: all that is there at once, so that a line which takes back an earlier one
/// is known before that is begun.
class LineReader {
  public:
    struct Line {
        std::string text;  ///< without its line end
        bool isTooLong = false;
    };

    LineReader(int descriptor, std::size_t longestLine) : descriptor_(descriptor), longest_(longestLine) {}

    /// The next line that is here; waits for one when `wait` is set. Nothing when there is none yet, or none
    /// any more.
    std::optional<Line> next(bool wait);

    bool isAtEnd() const { return atEnd_ && buffer_.empty(); }

  private:
    std::optional<Line> take();
    void fill();

    int descriptor_;
    std::size_t longest_;
    std::string buffer_;
    bool skipping_ = false;  ///< within a line that is too long
    bool atEnd_ = false;
};

/// Writes a text and a line end whole, waiting for a reader that is slow, on a descriptor that itself would
/// not wait too; false when nobody reads any more.
[[nodiscard]] bool writeLine(int descriptor, std::string text);

}  // namespace tappora

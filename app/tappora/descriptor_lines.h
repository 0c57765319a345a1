#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace tappora {

/// Reads lines from a descriptor. It takes all that is there at once: a line may cancel an earlier one, and
/// should be known before work on that one begins.
class LineReader {
  public:
    struct Line {
        std::string text;  ///< without its line end
        bool isTooLong = false;
    };

    LineReader(int descriptor, std::size_t longestLine) : descriptor_(descriptor), longest_(longestLine) {}

    /// The next line. Without one, it waits when `wait` is set, and otherwise gives nothing. Nothing also at
    /// the end of the input.
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

/// Writes a text and a line end whole. Waits for a slow reader, also where the descriptor itself would not
/// wait. False when nobody reads any more.
[[nodiscard]] bool writeLine(int descriptor, std::string text);

}  // namespace tappora

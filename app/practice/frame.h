#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tappora {

/// What a piece of text on the screen is, whatever a terminal can do to show it.
enum class SpanStyle {
    plain,
    faint,
    strong,
    right,      ///< typed
    corrected,  ///< typed after a miss
    wrong,      ///< missed and not put right
    next,       ///< to be typed next
    nextWrong,  ///< the same, just missed
    learning,
    learned,
    slipping,
    pinky,  ///< a key of that finger
    ring,
    middle,
    index,
    thumb,
};

/// A piece of a line.
struct Span {
    std::string text;
    SpanStyle style = SpanStyle::plain;

    bool operator==(const Span&) const = default;
};
using FrameLine = std::vector<Span>;

/// Everything that a screen shows, from its top left corner.
struct Frame {
    std::vector<FrameLine> lines;

    /// The lines as plain text, for reading aloud and for tests.
    std::string text() const;
};

/// The size of a screen, and whether it shows more than ASCII.
struct ScreenShape {
    std::size_t lines = 24;
    std::size_t columns = 80;
    bool unicode = true;
};

/// How many columns a text takes on the screen, by the C library's locale.
std::size_t columnsOf(std::string_view text);
std::size_t columnsOf(const FrameLine& line);

/// As much of a line as fits.
FrameLine clipped(const FrameLine& line, std::size_t columns);

/// The first of some ways to say a thing that fits, or else the last.
FrameLine fitting(std::vector<FrameLine> ways, std::size_t columns);

/// A line with its first part at the left and its last at the right, a blank at least between them.
FrameLine spread(FrameLine left, FrameLine right, std::size_t columns);

}  // namespace tappora

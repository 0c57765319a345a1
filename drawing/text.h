#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/geometry.h"
#include "drawing/style.h"

namespace drawing {

enum class Weight : std::uint16_t { regular = 400, medium = 500, semibold = 600, bold = 700 };
enum class Design : std::uint8_t { standard, rounded, monospaced };
enum class Alignment : std::uint8_t { leading, centre, trailing };

/// How letters look. Sizes are points to the em; families are what the system has, whichever that is.
struct Font {
    double size = 13;
    Weight weight = Weight::regular;
    Design design = Design::standard;
    bool monospacedDigits = false;

    static Font caption() { return {.size = 10}; }
    static Font body() { return {.size = 13}; }
    static Font title() { return {.size = 22}; }
    static Font largeTitle() { return {.size = 26}; }

    Font withWeight(Weight value) const;
    Font withSize(double value) const;
    Font withMonospacedDigits() const;

    // Layout goes by these, not by the font that is found, so that a picture is the same value on every
    // machine.
    double lineHeight() const { return 1.22 * size; }
    /// From the line's top down to the baseline.
    double ascent() const { return 0.95 * size; }
    double capHeight() const { return 0.71 * size; }

    bool operator==(const Font&) const = default;
};

/// One line of text.
struct Text {
    /// What of the letters is at `at.y`.
    enum class Anchor : std::uint8_t {
        baseline,
        middle,  ///< halfway up the capitals
    };

    std::string text;
    Font font;
    Style style;
    Point at;  ///< x of the edge or centre that the alignment names
    Alignment alignment = Alignment::leading;
    Anchor anchor = Anchor::baseline;
    double width = 0;         ///< the room it must keep to; 0 for any
    double minimumScale = 1;  ///< how far it may shrink before its end is cut off with "…"

    bool operator==(const Text&) const = default;
};

/// About how wide a text is, in points, rather more than less: for layout, which does not ask which font
/// there is.
double roughWidth(std::string_view text, const Font& font);

/// How wide a text is in a font, in points.
using TextWidth = std::function<double(std::string_view text, const Font& font)>;

/// A text in lines that have that room, broken at blanks; a word too long for one has a line of its own.
std::vector<std::string> linesOf(std::string_view text, const Font& font, double room,
                                 const TextWidth& width);

/// A text as it is painted: shrunk, and then cut, until it keeps to its room, and on its baseline.
struct FittedText {
    std::string text;
    Font font;
    Point baseline;

    bool operator==(const FittedText&) const = default;
};

/// Asks for the width only when the text could be too wide. What is no UTF-8 becomes U+FFFD.
FittedText fitted(const Text& text, const TextWidth& width);

}  // namespace drawing

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tappora {

struct Environment;

/// How finely a terminal tells colours apart.
enum class ColourDepth {
    basic,    ///< the sixteen that its user chose
    indexed,  ///< the 256 of xterm
    full,     ///< 24 bits
};

/// What the reader of standard output can show.
struct Terminal {
    bool colours = false;  ///< never with NO_COLOR, nor when the output goes to a file or another program
    bool unicode = false;  ///< whether the locale's encoding is UTF-8
    ColourDepth depth = ColourDepth::basic;  ///< as COLORTERM and TERM say
    std::size_t width = 80;                  ///< in columns: COLUMNS, else the terminal's, else 80

    static Terminal of(const Environment& environment);

    std::string bold(std::string_view text) const { return styled(text, "1"); }
    std::string italic(std::string_view text) const { return styled(text, "3"); }
    /// For what matters less than the rest.
    std::string faint(std::string_view text) const { return styled(text, "2"); }
    /// The colour of charts.
    std::string accent(std::string_view text) const { return styled(text, "38;5;173"); }

  private:
    /// `text` under a "select graphic rendition" code (ECMA-48, 8.3.117), or unchanged without colours.
    std::string styled(std::string_view text, std::string_view code) const;
};

}  // namespace tappora

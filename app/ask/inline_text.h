#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "app/common/terminal/terminal.h"

namespace tappora {

/// A run of text between blanks, and how many columns it takes without its styles.
struct Word {
    std::string text;
    std::size_t width = 0;
};

/// The words of a line of Markdown with its marks for bold, italics, code and links taken out; all of them
/// bold when the line is.
std::vector<Word> inlineWords(std::string_view line, const Terminal& terminal, bool isBold);

}  // namespace tappora

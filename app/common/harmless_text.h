#pragma once

#include <string>
#include <string_view>

namespace tappora {

/// Text of others as a terminal may be sent it: without the characters that would steer it or turn the order
/// of what follows, and with U+FFFD for bytes that are not UTF-8. Line ends and tabs stay.
std::string harmless(std::string_view text);

/// Harmless text on one line: line ends, tabs and Unicode's separators of lines and paragraphs become spaces.
std::string harmlessLine(std::string_view text);

/// JSON with those characters written as \uXXXX, which means the same.
std::string harmlessJson(std::string_view json);

}  // namespace tappora

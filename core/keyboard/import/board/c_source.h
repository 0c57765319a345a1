#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tapcore {

/// A file of C as far as a keymap needs it: nothing is run, and files that it includes are not read.
struct CSource {
    /// Without comments, strings and definitions. Of other lines for the preprocessor, such as conditions,
    /// only the `#` is left.
    std::string text = {};
    /// What names without arguments mean; "" for a name that is defined twice in different ways. A name
    /// that only passes its arguments on, `#define A(...) B(__VA_ARGS__)`, means B.
    std::map<std::string, std::string, std::less<>> defines = {};
    /// The names of all enums, without a number where that cannot be told.
    std::map<std::string, std::optional<std::int64_t>, std::less<>> enumerators = {};

    /// What a name means in the end, without brackets around it; any other text as it is.
    std::string replaced(std::string_view name) const;
    /// The number from 0 to 65535 that a text is or means, where that can be told.
    std::optional<std::int64_t> numberOf(std::string_view number) const;
};

CSource readCSource(std::string_view source);

/// The length of the comment or string that a text starts with; 0 when it starts with neither.
std::size_t skippedLength(std::string_view text);

/// Whether a character can be in a name or a number.
bool isWordPart(char c);

/// The text between the bracket at `open` and the one that closes it. Throws KeymapError when no bracket
/// does.
std::string_view inBrackets(std::string_view text, std::size_t open);

/// The text without the round brackets around all of it, and without white space at its ends.
std::string_view withoutBrackets(std::string_view text);

/// The parts of a list, split at the commas that are not in brackets; no part for an empty list.
std::vector<std::string> splitAtCommas(std::string_view list);

}  // namespace tapcore

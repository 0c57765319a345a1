#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tapcore {

// A character is what a reader takes for one: an extended grapheme cluster (Unicode Standard Annex 29). All
// text is UTF-8; bytes that are not count as U+FFFD. Casing is full Unicode casing without a locale ("ß"
// becomes "SS").

/// How many characters `text` has.
std::size_t characterCount(std::string_view text);

/// How many columns of a terminal `text` takes: two for each wide character (Unicode Standard Annex 11), else
/// one.
std::size_t columnCount(std::string_view text);

/// The characters of `text`, in order, as views into it.
std::vector<std::string_view> characters(std::string_view text);

/// The first `limit` characters of `text`, or all of it when it has no more.
std::string_view firstCharacters(std::string_view text, std::size_t limit);

/// True when `text` is exactly one character.
bool isSingleCharacter(std::string_view text);

// Kinds of characters, judged by the first scalar. Empty text is of no kind.

/// Whether a character is a letter (alphabetic).
bool isLetter(std::string_view character);
/// Whether it is a number, of any numeric type.
bool isNumber(std::string_view character);
/// Whether it is a control character, as NUL and line ends are.
bool isControl(std::string_view character);
/// Whether it is a mark that combines with the character before it.
bool isMark(std::string_view character);
/// Whether it shows: it is neither white space nor a control or format character.
bool isVisible(std::string_view character);

std::string uppercased(std::string_view text);
std::string lowercased(std::string_view text);

/// `text` as it is compared without regard to case, in every script: "STRASSE" and "Straße" become equal.
/// Line breaks stay where they are.
std::string caseFolded(std::string_view text);

/// `text` without white space (Unicode's) at its ends.
std::string_view trimmedWhiteSpace(std::string_view text);

/// The name of a character in words, as the Unicode Standard gives it, lower-cased: "vertical line". The
/// names of one that has several scalars are joined by " + ".
std::string characterName(std::string_view character);
/// The character of such a name, whatever its case; nothing when no character has that name.
std::optional<std::string> namedCharacter(std::string_view name);

/// `text` with what can be one scalar as one: "e" and a combining acute become "é" (Normalization Form C).
std::string composed(std::string_view text);
/// `text` with its scalars taken apart: "é" becomes "e" and a combining acute (Normalization Form D).
std::string decomposed(std::string_view text);

/// Whether a text holds a control character (U+0000 to U+001F, U+007F to U+009F), such as a line end.
bool hasControlCharacter(std::string_view text);

}  // namespace tapcore

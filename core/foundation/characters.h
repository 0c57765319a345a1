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

/// Whether a character is a letter (alphabetic) or a number (of any numeric type), judged by its first
/// scalar. False for empty text.
bool isLetter(std::string_view character);
bool isNumber(std::string_view character);

/// The same for control characters (NUL and line ends among them), for marks that combine with the
/// character before them, and for what shows: neither white space nor a control or format character.
bool isControl(std::string_view character);
bool isMark(std::string_view character);
bool isVisible(std::string_view character);

/// The first scalar of `text`; U+FFFD for bytes that are not UTF-8, and for none.
char32_t firstScalar(std::string_view text);

/// A scalar as UTF-8; U+FFFD for what is not a scalar (a surrogate, or past U+10FFFF).
std::string utf8(char32_t scalar);

std::string uppercased(std::string_view text);
std::string lowercased(std::string_view text);

/// `text` as it is compared without regard to case, in every script: "STRASSE" and "Straße" come to the same.
/// Line breaks stay where they are.
std::string caseFolded(std::string_view text);

/// `text` without white space (Unicode's) at its ends.
std::string_view trimmedWhiteSpace(std::string_view text);

/// The name of a character in words, as the Unicode Standard gives it, lower-cased: "vertical line". The
/// names of one that has several scalars are joined by " + ".
std::string characterName(std::string_view character);
/// The character of such a name, whatever its case; nothing when it names none.
std::optional<std::string> namedCharacter(std::string_view name);

/// `text` with what can be one scalar as one: "e" and a combining acute become "é" (Normalization Form C).
std::string composed(std::string_view text);
/// The other way round: "é" becomes "e" and a combining acute (Normalization Form D).
std::string decomposed(std::string_view text);

/// Whether a text holds a control character (U+0000 to U+001F, U+007F to U+009F), such as a line end.
bool hasControlCharacter(std::string_view text);

/// The place of the first byte that is not UTF-8, or npos when all of `text` is.
std::size_t firstInvalidUtf8(std::string_view text);

/// `text` with every byte sequence that is not UTF-8 replaced by U+FFFD.
std::string repairedUtf8(std::string_view text);

/// `text` with U+2400, the sign for it, in place of each NUL: a message that holds one ends there for whoever
/// asks an exception what it says.
std::string withVisibleNuls(std::string_view text);

}  // namespace tapcore

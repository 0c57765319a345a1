#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/common/system/environment.h"
#include "core/words/words.h"

namespace tappora {

/// The setting that chooses the language of texts: a code like "de", or "system".
inline constexpr std::string_view languageKey = "language";

/// The first of the languages there are that the user's locale asks for, by LANGUAGE, LC_ALL, LC_MESSAGES and
/// LANG as other programs read them; else English.
std::string systemLanguage(const Environment& environment, const std::vector<std::string>& available);

/// The locale of messages: LC_ALL, LC_MESSAGES or LANG, the first that has a value; empty without one.
std::string messageLocale(const Environment& environment);

/// The locale of dates in texts of a language: the user's own where it is one of that language, which then
/// says more of it ("de_AT").
std::string dateLocale(const tapcore::Words& words, const Environment& environment);

/// The locale of paper: LC_ALL, LC_PAPER or LANG, the first that has a value, without its encoding.
std::string paperLocale(const Environment& environment);

/// The language of texts: the one set, else the system's. A set one that has no texts is warned of, with
/// those there are, and does not count.
std::string chosenLanguage(const Environment& environment);

/// The texts that come with the program, in the language chosen, in the system's, or in that of a code.
/// Failure when a file of them cannot be used.
tapcore::Words chosenWords(const Environment& environment);
tapcore::Words systemWords(const Environment& environment);
tapcore::Words wordsIn(std::string_view language, const Environment& environment);

}  // namespace tappora

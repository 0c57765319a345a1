#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/common/folder/settings.h"
#include "app/common/system/environment.h"

namespace tappora {

/// The setting that chooses the language of practice words, by its code.
inline constexpr std::string_view practiceLanguageKey = "practice.language";

/// The language that is typed, as far as one can tell: the one set for practice, else the system's when it is
/// available, else English. A set one that is not available is warned of, with those there are.
std::string practiceLanguage(const Settings& settings, const Environment& environment,
                             const std::vector<std::string>& available);

/// A language and its letters.
struct TypedLanguage {
    std::string code;
    std::vector<std::string> letters;  ///< none when what comes with the program cannot be read
};

/// The language of a code that --language named, else that of `practiceLanguage`. UsageError for a code that
/// is not available.
TypedLanguage typedLanguage(const std::optional<std::string>& named, const Environment& environment);

}  // namespace tappora

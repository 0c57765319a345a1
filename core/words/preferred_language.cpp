#include "core/words/preferred_language.h"

#include <algorithm>
#include <string_view>

#include "core/foundation/characters.h"
#include "core/words/words.h"

namespace tapcore {
namespace {

/// "de-at" of "de_AT.UTF-8@euro".
std::string code(std::string_view locale) {
    std::string result(locale.substr(0, locale.find_first_of(".@")));
    std::replace(result.begin(), result.end(), '_', '-');
    return lowercased(result);
}

}  // namespace

std::string preferredLanguage(const std::vector<std::string>& wishes,
                              const std::vector<std::string>& available) {
    for (const std::string& wish : wishes) {
        const std::string wished = code(wish);
        for (const std::string& sought : {wished, wished.substr(0, wished.find('-'))})
            for (const std::string& language : available)
                if (code(language) == sought) return language;
    }
    return std::string(Words::source);
}

}  // namespace tapcore

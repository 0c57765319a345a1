#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace tapcore {

/// How a language writes numbers, after the Unicode locale data. Copies share what they know.
class LanguageRules {
  public:
    /// `language` is a code like "de" or "uk"; of one that is not known the numbers are plain.
    explicit LanguageRules(std::string_view language);

    /// A whole number with its digits grouped as the language groups them: "12,345" in English, "12.345" in
    /// German.
    std::string number(std::int64_t value) const;

    /// A number with so many decimals, rounded half to even: "1,234.5" in English, "1.234,5" in German.
    std::string number(double value, int decimals) const;

  private:
    struct Implementation;
    std::shared_ptr<const Implementation> implementation_;
};

/// What a language is called in English: "German" for "de"; the code itself when it is not known.
std::string englishName(std::string_view language);

}  // namespace tapcore

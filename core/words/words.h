#pragma once

#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/foundation/language_rules.h"

namespace tapcore {

/// The texts of one interface language, by key ("widget.waiting"). Each language is a file of the folder
/// "Words": a JSON object of texts, where a text that depends on a number is an object of its plural forms by
/// category. What the language lacks is English.
class Words {
  public:
    /// A file of texts that cannot be used: "PATH: KEY: WHY".
    class FileError : public std::runtime_error {
      public:
        using std::runtime_error::runtime_error;
    };

    /// The values of a text by name. Each replaces its "{name}" in the text.
    using Values = std::initializer_list<std::pair<std::string_view, std::string>>;

    /// The language that has a text for every key; its texts are used for what another language lacks.
    static constexpr std::string_view source = "en";

    /// The texts of `folder`/`language`.json over those of `folder`/en.json; those alone for a language that
    /// has no file. Throws FileError.
    static Words load(const std::filesystem::path& folder, std::string_view language);

    /// The codes of the languages that have a file in `folder`, ascending.
    static std::vector<std::string> languages(const std::filesystem::path& folder);

    /// The code of the language that was loaded: "en" where the one asked for has no file.
    const std::string& language() const { return tables_.front().language; }

    /// The text of a key; of one that has plural forms the general one; the key itself when no table has it.
    std::string text(std::string_view key) const { return text(key, {}); }
    /// The same with each "{name}" of `values` replaced by its value. A value is taken as it is, also one
    /// with braces; a name that has no value stays as it is.
    std::string text(std::string_view key, Values values) const;

    /// The form of a text that goes with a number of things, with {n} as that number and `values` as above.
    std::string plural(std::string_view key, std::int64_t count, Values values = {}) const;

    /// A whole number as the language writes it, with its digits grouped.
    std::string number(std::int64_t value) const { return tables_.front().rules.number(value); }
    /// A number with so many decimals as the language writes it.
    std::string number(double value, int decimals) const {
        return tables_.front().rules.number(value, decimals);
    }

  private:
    /// A text by plural category; one without forms has "other" alone.
    using Forms = std::map<std::string, std::string, std::less<>>;
    struct Table {
        std::string language;
        LanguageRules rules;
        std::map<std::string, Forms, std::less<>> texts;
    };

    Words() = default;
    static Table read(const std::filesystem::path& folder, std::string_view language);
    std::string form(std::string_view key, std::optional<std::int64_t> count) const;

    std::vector<Table> tables_;  ///< the language's own, unless that is English, and the English one
};

}  // namespace tapcore

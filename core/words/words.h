#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "core/foundation/language_rules.h"
#include "core/foundation/text_pieces.h"

namespace tapcore {

/// The texts of one interface language, by key ("widget.waiting"). Each language is a file of the folder
/// "Words": a JSON object of texts. What the language lacks is English.
class Words {
  public:
    /// A file of texts that cannot be used: "PATH: KEY: WHY".
    class FileError : public std::runtime_error {
      public:
        using std::runtime_error::runtime_error;
    };

    /// The values of a text by name. Each replaces its "{name}" in the text.
    using Values = TextValues;

    /// The language that has a text for every key; its texts are used for what another language lacks.
    static constexpr std::string_view source = "en";

    /// The texts of `folder`/`language`.json over those of `folder`/en.json; those alone for a language that
    /// has no file. Throws FileError.
    static Words load(const std::filesystem::path& folder, std::string_view language);

    /// The codes of the languages that have a file in `folder`, ascending.
    static std::vector<std::string> languages(const std::filesystem::path& folder);

    /// The code of the language that was loaded: "en" where the one asked for has no file.
    const std::string& language() const { return tables_.front().language; }

    /// The text of a key, the key itself when no table has it. Each "{name}" of `values` in it is replaced by
    /// its value. A value is taken as it is, also one with braces; a name that has no value stays as it is.
    std::string text(std::string_view key, Values values = {}) const;

    /// A whole number as the language writes it, with its digits grouped.
    std::string number(std::int64_t value) const { return tables_.front().rules.number(value); }
    /// A number with so many decimals as the language writes it.
    std::string number(double value, int decimals) const {
        return tables_.front().rules.number(value, decimals);
    }

  private:
    struct Table {
        std::string language;
        LanguageRules rules;
        std::map<std::string, std::string, std::less<>> texts;
    };

    Words() = default;
    static Table read(const std::filesystem::path& folder, std::string_view language);

    std::vector<Table> tables_;  ///< the language's own, unless that is English, and the English one
};

}  // namespace tapcore

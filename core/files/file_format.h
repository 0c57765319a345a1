#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "core/foundation/raw_values.h"

namespace tapcore {

/// The text format that the owner of a data folder picked. Reading takes both, whatever the choice.
struct FileFormat {
    enum Case { org, markdown };

    Case value = org;

    constexpr FileFormat(Case format = org) : value(format) {}  // NOLINT(google-explicit-constructor)
    constexpr operator Case() const { return value; }           // NOLINT(google-explicit-constructor)

    static constexpr std::array<Case, 2> allCases = {org, markdown};
    static constexpr RawValues<Case, 2> words{{"org", "markdown"}};

    /// The extensions of data files, "tsv" among them: an older layout, read but never written.
    static constexpr std::array<std::string_view, 3> knownExtensions = {"org", "md", "tsv"};

    /// Whether an extension, without its dot, is one of a data file.
    static constexpr bool isKnown(std::string_view extension) {
        for (const std::string_view known : knownExtensions)
            if (known == extension) return true;
        return false;
    }

    /// The format of a stored word, or nothing.
    static std::optional<FileFormat> parse(std::string_view rawValue) { return words.find(rawValue); }

    /// The stored word: "org" or "markdown".
    std::string_view rawValue() const { return words.of(value); }
    FileFormat id() const { return *this; }
    /// As settings show it.
    std::string_view title() const;
    std::string_view fileExtension() const;
    /// The extensions to try when reading: this format's, the other's, "tsv".
    std::array<std::string_view, 3> readOrder() const;

    /// A document's title line, and a section's heading line, each with its line end.
    std::string titleLine(std::string_view text) const;
    std::string heading(std::string_view text) const;
};

}  // namespace tapcore

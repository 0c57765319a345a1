#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/foundation/flat_map.h"
#include "core/practice/seeded_random.h"

namespace tapcore {

/// Which letters of a language follow which, and the order in which they are taught. Practice words are walks
/// through it that use open letters only, so they are no words of the language but look and feel like them.
/// docs/practice.md shows the file.
struct LetterModel {
    using Counts = FlatMap<std::string, std::int64_t>;

    std::string language;                      ///< its code, "de", which also names the file
    std::vector<std::string> order;            ///< characters
    FlatMap<std::string, Counts> transitions;  ///< by the two characters before, how often which one follows

    /// What marks a word's start (twice, the context of its first letter) and its end (as if it were a
    /// letter).
    static constexpr std::string_view wordStart = "^";
    static constexpr std::string_view wordEnd = "$";

    /// Words have so many letters.
    static constexpr std::size_t shortestWord = 3;
    static constexpr std::size_t longestWord = 8;

    /// Reads a model file's text. Throws JsonError saying where: a member is missing, an entry of the order
    /// or a next character is not one character, a count is no 64-bit integer.
    static LetterModel parse(std::string_view language, std::string_view text);

    /// The model in LANGUAGE.json of a folder; nothing when it is missing or cannot be read. It is read once
    /// for the whole process and kept: this cache, with its lock, is the only state the library shares
    /// between callers.
    static std::shared_ptr<const LetterModel> load(std::string_view language,
                                                   const std::filesystem::path& folder);
    /// The languages that have a model file in a folder, ascending.
    static std::vector<std::string> available(const std::filesystem::path& folder);

    /// A practice word of open letters; nothing when 40 attempts fail.
    std::optional<std::string> word(const std::vector<std::string>& open, SeededRandom& rng) const;

    /// Up to `count` words of open letters, of which at least two in three hold the focus letter, when there
    /// is one. Fewer, or none, when the open letters do not make enough words.
    std::vector<std::string> lesson(const std::vector<std::string>& open,
                                    const std::optional<std::string>& focus, std::int64_t count,
                                    SeededRandom& rng) const;

    bool operator==(const LetterModel&) const = default;
};

}  // namespace tapcore

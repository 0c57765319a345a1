#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tapcore {

/// The stored words of an enumeration whose values count up from 0, in declared order: one table, used both
/// ways.
template <class Enum, std::size_t count>
struct RawValues {
    std::array<std::string_view, count> words;

    constexpr std::string_view of(Enum value) const { return words[static_cast<std::size_t>(value)]; }

    /// The value of a word, or nothing.
    constexpr std::optional<Enum> find(std::string_view word) const {
        for (std::size_t i = 0; i < count; ++i)
            if (words[i] == word) return static_cast<Enum>(i);
        return std::nullopt;
    }

    /// All words, in declared order: what an option or a message lists.
    std::vector<std::string> names() const { return {words.begin(), words.end()}; }
};

}  // namespace tapcore

#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/foundation/raw_values.h"

namespace tapcore {

/// The two side courses, taught like letters in an order of their own: digits, and punctuation marks.
struct PracticeCourse {
    enum Case { digits, marks };

    static constexpr RawValues<Case, 2> words{{"digits", "marks"}};

    Case value = digits;

    constexpr PracticeCourse(Case course) : value(course) {}  // NOLINT(google-explicit-constructor)
    constexpr operator Case() const { return value; }         // NOLINT(google-explicit-constructor)

    /// The course of a stored word; nothing for another one.
    static std::optional<PracticeCourse> parse(std::string_view rawValue) { return words.find(rawValue); }
    /// The course that teaches a character; nothing when none does.
    static std::optional<PracticeCourse> of(std::string_view character);

    std::string_view rawValue() const { return words.of(value); }
    /// Its characters, in the order they are taught.
    std::vector<std::string> order() const;
    /// The settings key of how many of them are open: on any layout, or on one.
    std::string openedKey() const;
    std::string openedKey(const std::optional<std::string>& layout) const;
};

}  // namespace tapcore

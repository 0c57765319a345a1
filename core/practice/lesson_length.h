#pragma once

#include <cstdint>
#include <optional>

namespace tapcore {

/// How long a lesson is: short, medium or long. Settings store a number of words, which may be another one.
struct LessonLength {
    enum Case { short_ = 15, medium = 30, long_ = 60 };

    Case value = medium;

    constexpr LessonLength(Case length) : value(length) {}  // NOLINT(google-explicit-constructor)
    constexpr operator Case() const { return value; }       // NOLINT(google-explicit-constructor)
    /// The length that a stored number of words means: medium when nothing is stored or no length has it.
    static LessonLength fromStored(std::optional<std::int64_t> stored);

    /// The length of so many words; nothing for any other number.
    static std::optional<LessonLength> parse(std::int64_t words);
    std::int64_t rawValue() const { return value; }

    /// The number of words to practise with: 30 when none or 0 is stored, else the stored one taken into 5 to
    /// 200.
    static std::int64_t words(std::optional<std::int64_t> stored);
    /// The length picker offers 15, 30 and 60, and tag -1 for any other number.
    static std::int64_t tag(std::int64_t words);
    /// The number that a picked tag gives, from the stored one. Going from a preset to a number of one's own
    /// gives 45.
    static std::int64_t words(std::int64_t picking, std::int64_t from);
};

}  // namespace tapcore

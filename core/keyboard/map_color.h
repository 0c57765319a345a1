#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "core/foundation/raw_values.h"

namespace tapcore {

/// The family of colours that a heat map is drawn in, as its user chose.
struct MapColor {
    enum Case { amber, rust, gold, green, teal, blue, purple, graphite };

    /// The one where no choice was made.
    static constexpr Case usual = rust;

    Case value = usual;

    constexpr MapColor(Case color = usual) : value(color) {}  // NOLINT(google-explicit-constructor)
    constexpr operator Case() const { return value; }         // NOLINT(google-explicit-constructor)

    static constexpr std::array<Case, 8> allCases = {amber, rust, gold, green, teal, blue, purple, graphite};
    static constexpr RawValues<Case, 8> words{
        {"amber", "rust", "gold", "green", "teal", "blue", "purple", "graphite"}};

    /// The colour of a stored word, or nothing.
    static std::optional<MapColor> parse(std::string_view rawValue) { return words.find(rawValue); }

    /// The stored word: "amber".
    std::string_view rawValue() const { return words.of(value); }
    std::string_view id() const { return rawValue(); }
    /// As a part of the hue circle, from red.
    double hue() const;
    /// As a part of full saturation; 0 is grey.
    double saturation() const;
};

}  // namespace tapcore

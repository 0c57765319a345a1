#pragma once

#include <cstdint>
#include <optional>

namespace drawing {

/// Red, green and blue of sRGB, and opacity, each 0 to 1. Not multiplied by the opacity.
struct Colour {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    static constexpr Colour grey(double brightness, double alpha = 1) {
        return {brightness, brightness, brightness, alpha};
    }

    bool operator==(const Colour&) const = default;
};

/// Whether the surroundings are light or dark.
enum class Theme { light, dark };

/// How much of a picture's own colour its surroundings let through.
enum class RenderingMode {
    fullColour,
    accented,  ///< what is accentable in the accent colour, all else in the foreground's
    vibrant,   ///< everything in the foreground's colour
};

/// What a picture is painted for.
struct Appearance {
    Theme theme = Theme::light;
    RenderingMode mode = RenderingMode::fullColour;
    std::optional<Colour> accent = std::nullopt;  ///< the user's; the system's own when not given

    bool operator==(const Appearance&) const = default;
};

/// What something is painted with, by its meaning: it becomes a colour only when painted.
struct Style {
    enum class Role : std::uint8_t {
        primary,    ///< text and marks in the foreground
        secondary,  ///< what says less
        tertiary,
        quaternary,    ///< the faintest foreground
        tertiaryFill,  ///< the ground of a container
        background,    ///< the paper: opaque, and none in accented and vibrant rendering
        accent,
        given,  ///< a colour for each theme
    };

    Role role = Role::primary;
    double opacity = 1;                          ///< 0 to 1, on top of the role's own
    bool accentable = false;                     ///< takes the accent colour in accented rendering
    Colour light = {};                           ///< of `given`
    Colour dark = {};                            ///< of `given`
    std::optional<double> toned = std::nullopt;  ///< see tonedTo

    static Style given(Colour light, Colour dark) {
        return {.role = Role::given, .light = light, .dark = dark};
    }
    /// The same style with another opacity.
    Style withOpacity(double value) const;
    /// The same style, which takes the accent colour in accented rendering.
    Style asAccentable() const;
    /// In accented and vibrant rendering the primary style with that opacity instead.
    Style tonedTo(double value) const;

    bool operator==(const Style&) const = default;
};

/// What says less than the primary style.
inline constexpr Style secondary{.role = Style::Role::secondary};

/// The colour that a style has there. Its opacity is within 0 and 1 whatever the style's; nan counts as 0.
Colour resolved(const Style& style, const Appearance& appearance);

}  // namespace drawing

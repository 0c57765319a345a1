#include "drawing/style.h"

#include <algorithm>

namespace drawing {
namespace {

/// Opacities of the foreground's shades. Secondary text keeps a contrast of 4.5 to 1 on either paper.
struct Shades {
    double foreground;  ///< its brightness
    double paper;
    double primary;
    double secondary;
    double tertiary;
    double quaternary;
    double tertiaryFill;
};

constexpr Shades lightShades = {0, 1, 0.88, 0.6, 0.3, 0.09, 0.05};
constexpr Shades darkShades = {1, 0.11, 0.92, 0.6, 0.3, 0.13, 0.08};
constexpr Colour lightAccent = {0, 0.4, 0.85};
constexpr Colour darkAccent = {0.3, 0.62, 1};

const Shades& shadesOf(Theme theme) { return theme == Theme::dark ? darkShades : lightShades; }

Colour accentOf(const Appearance& appearance) {
    return appearance.accent.value_or(appearance.theme == Theme::dark ? darkAccent : lightAccent);
}

/// Opacity of the foreground that a role means; a colour counts as primary.
double shade(Style::Role role, const Shades& shades) {
    switch (role) {
        case Style::Role::secondary:
            return shades.secondary;
        case Style::Role::tertiary:
            return shades.tertiary;
        case Style::Role::quaternary:
            return shades.quaternary;
        case Style::Role::tertiaryFill:
            return shades.tertiaryFill;
        case Style::Role::background:
            return 0;
        default:
            return shades.primary;
    }
}

Colour fullColour(const Style& style, const Appearance& appearance) {
    const Shades& shades = shadesOf(appearance.theme);
    switch (style.role) {
        case Style::Role::given:
            return appearance.theme == Theme::dark ? style.dark : style.light;
        case Style::Role::accent:
            return accentOf(appearance);
        case Style::Role::background:
            return Colour::grey(shades.paper);
        default:
            return Colour::grey(shades.foreground, shade(style.role, shades));
    }
}

/// Where colours do not pass: one colour, and the style's strength as its opacity.
Colour toned(const Style& style, const Appearance& appearance) {
    const Shades& shades = shadesOf(appearance.theme);
    const bool takesAccent = appearance.mode == RenderingMode::accented && style.accentable;
    Colour colour = takesAccent ? accentOf(appearance) : Colour::grey(shades.foreground);
    const double strength = style.toned ? shades.primary : shade(style.role, shades);
    colour.alpha = takesAccent ? strength / shades.primary : strength;
    return colour;
}

double fraction(double value) { return value > 0 ? std::min(value, 1.0) : 0; }

}  // namespace

Style Style::withOpacity(double value) const {
    Style result = *this;
    result.opacity = value;
    return result;
}

Style Style::asAccentable() const {
    Style result = *this;
    result.accentable = true;
    return result;
}

Style Style::tonedTo(double value) const {
    Style result = *this;
    result.toned = value;
    return result;
}

Colour resolved(const Style& style, const Appearance& appearance) {
    const bool hasColour = appearance.mode == RenderingMode::fullColour;
    Colour colour = hasColour ? fullColour(style, appearance) : toned(style, appearance);
    colour.alpha *= fraction(hasColour ? style.opacity : style.toned.value_or(style.opacity));
    return colour;
}

}  // namespace drawing

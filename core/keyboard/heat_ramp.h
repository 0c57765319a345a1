#pragma once

#include <cstdint>
#include <optional>

#include "core/keyboard/map_color.h"

namespace tapcore {

/// The colours of the heat steps, and of the text on them.
namespace HeatRamp {

/// The ramp's hue where no colour is chosen.
inline constexpr double hue = 0.08;

/// Hue, saturation and brightness, each from 0 to 1.
struct HSB {
    double h = 0;
    double s = 0;
    double b = 0;

    bool operator==(const HSB&) const = default;
};

/// Red, green and blue, each from 0 to 1.
struct RGB {
    double red = 0;
    double green = 0;
    double blue = 0;

    bool operator==(const RGB&) const = default;
};

/// How much white text and black text stand out: the contrast ratios of WCAG 2, from 1 to 21.
struct Contrast {
    double white = 0;
    double black = 0;

    bool operator==(const Contrast&) const = default;
};

RGB rgb(const HSB& color);

/// The colour of a step; nothing below 1, which is drawn unheated, and from 5 up all the same. In light
/// appearance hotter keys are darker, in dark appearance brighter. `increased` is for the system's increased
/// contrast.
std::optional<HSB> hsb(std::int64_t step, bool dark, bool increased, MapColor color);

/// The contrast of text on a step, by its colour without increased contrast; nothing below 1.
std::optional<Contrast> contrast(std::int64_t step, bool dark, MapColor color);

/// Whether text on a step is to be white, or dark; on a step below 1 it is neither.
bool whiteText(std::int64_t step, bool dark, MapColor color);
bool darkText(std::int64_t step, bool dark, MapColor color);

}  // namespace HeatRamp

}  // namespace tapcore

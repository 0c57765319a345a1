#include "core/keyboard/heat_ramp.h"

#include <algorithm>
#include <cmath>

#include "core/keyboard/heatmap.h"

namespace tapcore::HeatRamp {
namespace {

/// A channel of sRGB, made linear.
double linear(double c) { return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); }

/// Relative luminance, as WCAG 2 has it.
double luminance(const RGB& color) {
    return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
}

}  // namespace

RGB rgb(const HSB& color) {
    const auto [h, s, b] = color;
    const double sector = std::floor(h * 6);
    const double f = h * 6 - sector;
    const double p = b * (1 - s);
    const double q = b * (1 - s * f);
    const double t = b * (1 - s * (1 - f));
    switch (static_cast<int>(sector) % 6) {
        case 0:
            return {b, t, p};
        case 1:
            return {q, b, p};
        case 2:
            return {p, b, t};
        case 3:
            return {p, q, b};
        case 4:
            return {t, p, b};
        default:
            return {b, p, q};
    }
}

std::optional<HSB> hsb(std::int64_t step, bool dark, bool increased, MapColor color) {
    if (step < 1) return std::nullopt;
    const double t =
        static_cast<double>(std::min(step, Heatmap::steps)) / static_cast<double>(Heatmap::steps);
    const double k = increased ? 1.15 : 1.0;
    if (dark)
        return HSB{color.hue(), (t * 0.4 + 0.5) * color.saturation(), std::min(k * (t * 0.78) + 0.22, 1.0)};
    return HSB{color.hue(), (t * 0.82 + 0.12) * color.saturation(), std::max(k * (t * -0.58) + 1.0, 0.3)};
}

std::optional<Contrast> contrast(std::int64_t step, bool dark, MapColor color) {
    const auto fill = hsb(step, dark, false, color);
    if (!fill) return std::nullopt;
    const double light = luminance(rgb(*fill));
    return Contrast{1.05 / (light + 0.05), (light + 0.05) / 0.05};
}

bool whiteText(std::int64_t step, bool dark, MapColor color) {
    const auto ratios = contrast(step, dark, color);
    return ratios && ratios->white > ratios->black;
}

bool darkText(std::int64_t step, bool dark, MapColor color) {
    return step >= 1 && !whiteText(step, dark, color);
}

}  // namespace tapcore::HeatRamp

#include "core/keyboard/map_color.h"

#include <cstddef>

namespace tapcore {
namespace {

struct Traits {
    double hue, saturation;
};

constexpr std::array<Traits, MapColor::allCases.size()> traits = {{
    {0.08, 1.0},   // amber
    {0.02, 1.0},   // rust
    {0.12, 1.0},   // gold
    {0.36, 0.8},   // green
    {0.5, 0.85},   // teal
    {0.62, 0.85},  // blue
    {0.78, 0.7},   // purple
    {0.6, 0.0},    // graphite
}};

const Traits& of(MapColor::Case color) { return traits[static_cast<std::size_t>(color)]; }

}  // namespace

double MapColor::hue() const { return of(value).hue; }
double MapColor::saturation() const { return of(value).saturation; }

}  // namespace tapcore

#include "core/keyboard/map_color.h"

#include <cstddef>

namespace tapcore {
namespace {

struct Traits {
    std::string_view rawValue;
    double hue, saturation;
};

constexpr std::array<Traits, MapColor::allCases.size()> traits = {{
    {"amber", 0.08, 1.0},
    {"rust", 0.02, 1.0},
    {"gold", 0.12, 1.0},
    {"green", 0.36, 0.8},
    {"teal", 0.5, 0.85},
    {"blue", 0.62, 0.85},
    {"purple", 0.78, 0.7},
    {"graphite", 0.6, 0.0},
}};

const Traits& of(MapColor::Case color) { return traits[static_cast<std::size_t>(color)]; }

}  // namespace

std::optional<MapColor> MapColor::parse(std::string_view rawValue) {
    for (const MapColor color : allCases)
        if (color.rawValue() == rawValue) return color;
    return std::nullopt;
}

std::string_view MapColor::rawValue() const { return of(value).rawValue; }
double MapColor::hue() const { return of(value).hue; }
double MapColor::saturation() const { return of(value).saturation; }

}  // namespace tapcore

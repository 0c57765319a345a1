#include "app/paint/heat_style.h"

#include "core/keyboard/heat_ramp.h"

namespace tappora {
namespace {

namespace HeatRamp = tapcore::HeatRamp;

drawing::Colour colourOf(const HeatRamp::HSB& hsb) { return drawing::Colour::hsb(hsb.h, hsb.s, hsb.b); }

}  // namespace

drawing::Style heatStyle(std::int64_t step, tapcore::MapColor color) {
    const auto light = HeatRamp::hsb(step, false, false, color);
    const auto dark = HeatRamp::hsb(step, true, false, color);
    return light && dark ? drawing::Style::given(colourOf(*light), colourOf(*dark)) : unheated;
}

}  // namespace tappora

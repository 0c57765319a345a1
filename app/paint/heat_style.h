#pragma once

#include "core/keyboard/map_color.h"
#include "drawing/style.h"

namespace tappora {

/// What is filled with no heat.
inline constexpr drawing::Style unheated{.role = drawing::Style::Role::quaternary};

/// What a step of heat is filled with, for either theme; a step of 0 is not heated.
drawing::Style heatStyle(std::int64_t step, tapcore::MapColor color);

}  // namespace tappora

#pragma once

#include <string>

#include "core/words/words.h"
#include "drawing/node.h"

// What several views are made of.

namespace tapwidgets {

/// The space between lines, in points.
inline constexpr double spacing = 6;

/// A line of text whose top is at `y`, in the room from `x` on, shrinking to 0.7 of its size and then cut.
drawing::Node textLine(std::string text, const drawing::Font& font, const drawing::Style& style,
                       drawing::Point topLeft, double room);

/// A title in a room of that many points: of caption size and secondary colour at the top left.
drawing::Node caption(std::string text, double room);
/// The room below a title on a canvas; of height 0 where there is none.
drawing::Rect belowCaption(const drawing::Size& canvas);

/// An amount as a whole number, as far as there are numbers of 64 bits.
std::string wholeNumber(double value, const tapcore::Words& words);

/// The symbol of a keyboard, `height` points high and symbolAspect times as wide. Decoration.
inline constexpr double symbolAspect = 1.5;
drawing::Node keyboardSymbol(drawing::Point topLeft, double height, const drawing::Style& style);

}  // namespace tapwidgets
